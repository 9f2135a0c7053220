#!/usr/bin/env python3
"""Lines and branches of src/ that the tests of a build run through: coverage.py BUILD, a build of preset `coverage` whose
tests have run. Prints the shares, each place that no test took and whose reason stands in coverage.txt, and each that has
none, in which case it fails.

A line of coverage.txt is a file, a part of a line of it, and why that line, or one side of a branch in it, is not taken;
so reasons stay with their lines wherever these move."""
import collections
import json
import pathlib
import subprocess
import sys

here = pathlib.Path(__file__).resolve().parent
root = here.parent
build = pathlib.Path(sys.argv[1]).resolve()
reasons = [[part.strip() for part in line.split(' | ')] for line in (here / 'coverage.txt').read_text().splitlines()
           if line and not line.startswith('#')]

lines = collections.Counter()
branches = {}
for data in sorted((build / 'src').rglob('*.gcda')):
    report = subprocess.check_output(['gcov', '--json-format', '--branch-probabilities', '--stdout', data], cwd=build,
                                     text=True, stderr=subprocess.DEVNULL)
    for document in report.splitlines():
        for file in json.loads(document)['files']:
            path = (root / file['file']).resolve() # the compiler writes paths as seen from the root
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

sides = [(place, count) for (place, _), taken in branches.items() for count in taken]
missed = {'lines': [place for place, count in lines.items() if count == 0],
          'branches': [place for place, count in sides if count == 0]}
used = set()


def code(place):
    return (root / place[0]).read_text().splitlines()[place[1] - 1].strip()


def reason(place):
    for i, (path, part, why) in enumerate(reasons):
        if path == place[0] and part in code(place):
            used.add(i)
            return why
    return None


open_places = 0
for place in sorted(set(missed['lines'] + missed['branches'])):
    why = reason(place)
    open_places += why is None
    kind = 'not run' if lines[place] == 0 else 'one side'
    print(f'{place[0]}:{place[1]}: {kind}: {code(place)}\n    {why or "NO REASON"}')
for i in sorted(set(range(len(reasons))) - used):
    print(f'coverage.txt: of no use here: {" | ".join(reasons[i])}')
for name, all_of in ('lines', len(lines)), ('branches', len(sides)):
    bare = sum(reason(place) is None for place in missed[name])
    covered = all_of - len(missed[name])
    print(f'{name}: {covered} of {all_of} taken, {100 * covered / all_of:.2f} %; '
          f'{len(missed[name]) - bare} with a reason, {bare} without')
sys.exit(open_places != 0)
