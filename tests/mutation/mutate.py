#!/usr/bin/env python3
"""Mutation testing: changes constants, shifts, comparisons and operators in src/, one at a time, and reports which of
these mutants the tests kill.

Works on a copy of the checkout in build/mutation. A mutant is compiled by its changed objects and one link. The tests
that killed the last mutants of the same file run first, then all tests at every eighth step of their sweeps; what
survives that runs the whole default suite. Mutants that compile to the same machine code are no mutants. With the same
seed and sources the same mutants come in the same order; an interrupted run goes on where it stopped.
"""
import argparse
import collections
import hashlib
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

root = pathlib.Path(__file__).resolve().parents[2]
# Operators have spaces on both sides where they are operators; angle brackets of templates have not.
swaps = {' << ': [' >> '], ' >> ': [' << '], ' < ': [' <= ', ' >= '], ' <= ': [' < '], ' > ': [' >= ', ' <= '],
         ' >= ': [' > '], ' == ': [' != '], ' != ': [' == '], ' + ': [' - '], ' - ': [' + '], ' * ': [' + '],
         ' / ': [' * '], ' % ': [' / '], ' & ': [' | '], ' | ': [' & '], ' ^ ': [' | '], ' && ': [' || '], ' || ': [' && '],
         ' += ': [' -= '], ' -= ': [' += '], '(!': ['('], 'true': ['false'], 'false': ['true']}
pattern = re.compile('|'.join(r'\b%s\b' % re.escape(s) if s.isalpha() else re.escape(s)
                              for s in sorted(swaps, key=len, reverse=True)) +
                     r"|(?<![\w.'])(?:0x[0-9A-Fa-f]+|\d+)(?=u?\b(?!\.))")
skipped = re.compile(r'^\s*(#|static_assert|using |template|//)|__builtin_|VEXLOR_WITH|^\s*asm')


def blank_comments(text):
    """The text with comments and strings as spaces, at the same places."""
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', lambda m: re.sub(r'[^\n]', ' ', m.group()), text,
                  flags=re.S)


def mutants_of(file, text):
    found = []
    for number, line in enumerate(blank_comments(text).split('\n')):
        if skipped.search(line):
            continue
        for match in pattern.finditer(line):
            old = match.group()
            if old in swaps:
                changes = swaps[old]
            else:
                value = int(old, 0)
                changes = [hex(value + d) if old.startswith('0x') else str(value + d) for d in (1, -1) if value + d >= 0]
            found += [(file, number, match.start(), old, new) for new in changes]
    return found


def sample(by_file, count, seed):
    """Files in turn, so that all have their share; of each any of its mutants."""
    chance = random.Random(seed)
    for mutants in by_file.values():
        chance.shuffle(mutants)
    queues = [collections.deque(by_file[file]) for file in sorted(by_file)]
    while queues:
        for queue in queues:
            yield queue.popleft()
        queues = [queue for queue in queues if queue]


class Build:
    def __init__(self, work, name, step, flags):
        self.folder = work / name
        run = subprocess.run(['cmake', '-S', work / 'source', '-B', self.folder, '-G', 'Ninja', '-DVEXLOR_TOOLS=OFF',
                              '-DCMAKE_BUILD_TYPE=Release', f'-DCMAKE_CXX_FLAGS_RELEASE={flags}',
                              f'-DVEXLOR_TEST_STEP={step}'], stdout=subprocess.DEVNULL)
        if run.returncode != 0:
            sys.exit('mutate: the build could not be configured')

    def make(self, *targets):
        return subprocess.run(['ninja', '-C', self.folder, *targets], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def objects(self):
        """What the library was compiled to."""
        digest = hashlib.sha256()
        for file in sorted((self.folder / 'src').rglob('*.o')):
            digest.update(file.read_bytes())
        return digest.digest()


def killed_by(command, folder, limit):
    """The name of what failed, '' when nothing did."""
    try:
        run = subprocess.run(command, cwd=folder, timeout=limit, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                             env=dict(os.environ, GTEST_FAIL_FAST='1'))
    except subprocess.TimeoutExpired:
        return 'time'
    if run.returncode == 0:
        return ''
    failed = re.findall(rb'\[  FAILED  \] (\S+?),? |Test +#\d+: (\S+) \.*\**(?:Failed|Exception)', run.stdout + b' ')
    begun = re.findall(rb'\[ RUN      \] (\S+)()', run.stdout) # the last one of those ended the program
    return b''.join((failed[:1] or begun[-1:] or [(b'a test',)])[0]).decode()


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument('--count', type=int, default=500, help='mutants that count (default: 500)')
    options.add_argument('--seed', type=int, default=1)
    options.add_argument('--limit', type=float, default=60, help='seconds for the quick tests of a mutant')
    options.add_argument('--quick', action='store_true', help='leave out the whole suite for what survives')
    options.add_argument('--only', default='', help='files whose name contains this')
    chosen = options.parse_args()

    work = root / 'build' / 'mutation'
    source = work / 'source'
    for name in subprocess.check_output(['git', 'ls-files', '-z'], cwd=root, text=True).split('\0')[:-1]:
        file = source / name
        file.parent.mkdir(parents=True, exist_ok=True)
        if (root / name).is_file() and (not file.exists() or file.read_bytes() != (root / name).read_bytes()):
            shutil.copy(root / name, file)
    quick = Build(work, 'quick', 8, '-O1')
    default = Build(work, 'default', 1, '-O3') if not chosen.quick else None
    if not quick.make('vexlor_tests'):
        sys.exit('mutate: the unchanged sources do not build')
    unchanged = quick.objects()
    if why := killed_by(['tests/vexlor_tests'], quick.folder, 600):
        sys.exit(f'mutate: the unchanged sources fail: {why}')

    texts = {f.relative_to(source): f.read_text() for f in sorted((source / 'src').rglob('*'))
             if f.suffix in ('.h', '.cpp') and 'avx512.cpp' not in f.name and chosen.only in str(f)}
    log = work / f'results-{chosen.seed}-{hashlib.sha256(str(texts).encode()).hexdigest()[:12]}.json'
    known = {}
    if log.exists():
        known = {tuple(r['mutant']): r for r in map(json.loads, log.read_text().splitlines())}
    killers = collections.defaultdict(collections.deque)
    counts = collections.Counter()
    survivors = []
    for mutant in sample({file: m for file, text in texts.items() if (m := mutants_of(file, text))}, 0, chosen.seed):
        if counts['killed'] + counts['survived'] >= chosen.count:
            break
        file, line, column, old, new = mutant
        key = (str(file), line, column, old, new)
        result = known.get(key)
        if result is None:
            lines = texts[file].split('\n')
            lines[line] = lines[line][:column] + new + lines[line][column + len(old):]
            (source / file).write_text('\n'.join(lines))
            started, killer, verdict = time.monotonic(), '', 'survived'
            if not quick.make('vexlor_tests'):
                verdict = 'invalid'
            elif quick.objects() == unchanged:
                verdict = 'equivalent'
            else:
                tests = 'tests/vexlor_tests'
                first = ':'.join(killers[file])
                killer = (killed_by([tests, f'--gtest_filter={first}'], quick.folder, chosen.limit) if first else '') or \
                    killed_by([tests], quick.folder, chosen.limit)
                if not killer and default is not None:
                    killer = killed_by(['ctest', '--stop-on-failure'], default.folder, 10 * chosen.limit) \
                        if default.make() else 'the build'
                verdict = 'killed' if killer else 'survived'
            (source / file).write_text(texts[file])
            result = {'mutant': key, 'verdict': verdict, 'killer': killer, 'seconds': round(time.monotonic() - started, 1)}
            with log.open('a') as out:
                out.write(json.dumps(result) + '\n')
            print(f"{verdict:10} {file}:{line + 1}: '{old.strip()}' -> '{new.strip()}' {killer} {result['seconds']} s",
                  flush=True)
        counts[result['verdict']] += 1
        if '.' in result['killer'] and result['killer'] not in killers[file]:
            killers[file].appendleft(result['killer'])
            while len(killers[file]) > 4:
                killers[file].pop()
        if result['verdict'] == 'survived':
            survivors.append(f"{file}:{line + 1}: '{old.strip()}' -> '{new.strip()}': {texts[file].splitlines()[line].strip()}")

    tried = counts['killed'] + counts['survived']
    print(f"{counts['killed']} of {tried} mutants killed, {100 * counts['killed'] / max(tried, 1):.1f} %; "
          f"{counts['equivalent']} with the same code and {counts['invalid']} that do not compile are left out")
    print('\n'.join(survivors))


main()
