#!/usr/bin/env python3
"""Lines and branches of src/ that the tests of a build run through: coverage.py BUILD, a build of preset `coverage` whose
tests have run. Prints the shares, and each line and branch that no test took."""
import collections
import json
import pathlib
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parents[1]
build = pathlib.Path(sys.argv[1]).resolve()
lines = collections.Counter()
branches = {}
for data in sorted((build / 'src').rglob('*.gcda')):
    report = subprocess.check_output(['gcov', '--json-format', '--branch-probabilities', '--stdout', data], cwd=build,
                                     text=True, stderr=subprocess.DEVNULL)
    for document in report.splitlines():
        for file in json.loads(document)['files']:
            path = (root / file['file']).resolve() # the compiler writes paths as from the root
            if root / 'src' not in path.parents:
                continue
            for line in file['lines']:
                place = (str(path.relative_to(root)), line['line_number'])
                lines[place] += line['count']
                taken = [branch['count'] for branch in line['branches']]
                # One line may be compiled many times: as templates, and for several instruction sets.
                so_far = branches.setdefault((place, len(taken)), [0] * len(taken))
                branches[place, len(taken)] = [a + b for a, b in zip(so_far, taken)]
if not lines:
    sys.exit('coverage: no data; build preset coverage and run its tests first')

missed = sorted(place for place, count in lines.items() if count == 0)
ways = [(place, way) for (place, _), taken in branches.items() for way, count in enumerate(taken) if lines[place]]
not_taken = sorted({place for (place, _), taken in branches.items() if lines[place] and 0 in taken})
untaken = sum(taken.count(0) for (place, _), taken in branches.items() if lines[place])


def share(part, whole):
    return f'{whole - part} of {whole}, {100 * (whole - part) / max(whole, 1):.2f} %'


def show(title, places):
    for path, number in places:
        print(f'{title} {path}:{number}: {(root / path).read_text().splitlines()[number - 1].strip()}')


show('not run:  ', missed)
show('one-sided:', not_taken)
print('lines:   ', share(len(missed), len(lines)))
print('branches:', share(untaken, len(ways)))
