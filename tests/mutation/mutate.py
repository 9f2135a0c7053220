#!/usr/bin/env python3
"""Mutation testing: changes constants, shifts, comparisons and operators in src/, one at a time, and reports which of
these mutants the tests kill.

The library and the tests are built once, in build/mutation; a mutant is compiled by the objects that see its file, and
one link. The tables of row kernels, isa/*.cpp, are built from one object per folder of kernels, as most mutants are
seen by one of them. What kills runs first: the tests that killed mutants of the same file or folder, in a library
of AVX2 kernels alone; then all objects and all tests, at every eighth step of their sweeps. What survives that runs the whole
default suite at the end (--default). Mutants that compile to the same machine code are no mutants. isa/avx512.cpp is
left out.

With the same seed and sources the same mutants come in the same order. An interrupted run goes on where it stopped;
--again tries those once more that survived, after tests have changed. survivors.txt says why survivors survive.
"""
import argparse
import collections
import concurrent.futures
import hashlib
import json
import os
import pathlib
import random
import re
import shlex
import shutil
import subprocess
import sys
import threading
import time

root = pathlib.Path(__file__).resolve().parents[2]
here = pathlib.Path(__file__).resolve().parent
# Operators have spaces on both sides where they are operators; angle brackets of templates have not.
swaps = {' << ': [' >> '], ' >> ': [' << '], ' < ': [' <= ', ' >= '], ' <= ': [' < '], ' > ': [' >= ', ' <= '],
         ' >= ': [' > '], ' == ': [' != '], ' != ': [' == '], ' + ': [' - '], ' - ': [' + '], ' * ': [' + '],
         ' / ': [' * '], ' % ': [' / '], ' & ': [' | '], ' | ': [' & '], ' ^ ': [' | '], ' && ': [' || '], ' || ': [' && '],
         ' += ': [' -= '], ' -= ': [' += '], '(!': ['('], 'true': ['false'], 'false': ['true']}
pattern = re.compile('|'.join(r'\b%s\b' % re.escape(s) if s.isalpha() else re.escape(s)
                              for s in sorted(swaps, key=len, reverse=True)) +
                     r"|(?<![\w.'])(?:0x[0-9A-Fa-f]+|\d+)(?=u?\b(?!\.))")
skipped = re.compile(r'^\s*(#|static_assert|using |template <[^{]*$)')


def mutants_of(file, text):
    """All of a file, whose comments and strings are out of the way."""
    text = re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', lambda m: re.sub(r'[^\n]', ' ', m.group()), text,
                  flags=re.S)
    found = []
    for number, line in enumerate(text.split('\n')):
        for match in pattern.finditer('' if skipped.search(line) else line):
            old = match.group()
            if old in swaps:
                changes = swaps[old]
            else:
                value = int(old, 0)
                changes = [hex(value + d) if old.startswith('0x') else str(value + d) for d in (1, -1) if value + d >= 0]
            found += [(file, number, match.start(), old, new) for new in changes]
    return found


def sample(by_file, seed):
    """Files in turn, so that all have their share; of each any of its mutants."""
    chance = random.Random(seed)
    for mutants in by_file.values():
        chance.shuffle(mutants)
    queues = [collections.deque(by_file[file]) for file in sorted(by_file)]
    while queues:
        for queue in queues:
            yield queue.popleft()
        queues = [queue for queue in queues if queue]


def mutated(text, line, column, old, new):
    lines = text.split('\n')
    lines[line] = lines[line][:column] + new + lines[line][column + len(old):]
    return '\n'.join(lines)


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors='replace', **more)


def must(command, what, **more):
    done = run(command, **more)
    if done.returncode != 0:
        sys.exit(f'mutate: {what}:\n{done.stdout[-3000:]}')
    return done.stdout


def limited(seconds, command):
    """With bounds for what loops or allocates without end. Time is the processor's, as others may use it too."""
    return ['prlimit', '--core=0', f'--cpu={seconds}', f'--as={16 << 30}', f'--fsize={1 << 30}', *map(str, command)]


def killed_by(seconds, command, **more):
    """The name of what failed, '' when nothing did."""
    try:
        done = run(limited(seconds, command), timeout=20 * seconds, env=dict(os.environ, GTEST_FAIL_FAST='1'), **more)
    except subprocess.TimeoutExpired:
        return 'time'
    if done.returncode == 0:
        return ''
    failed = re.findall(r'\[  FAILED  \] (\S+?),? |Test +#\d+: (\S+) \.*\**(?:Failed|Exception)', done.stdout + ' ')
    begun = re.findall(r'\[ RUN      \] (\S+)()', done.stdout) # the last one of those ended the program
    return ''.join((failed[:1] or begun[-1:] or [('a test',)])[0])


def copy_sources(target):
    for name in subprocess.check_output(['git', 'ls-files', '-z'], cwd=root, text=True).split('\0')[:-1]:
        file = target / name
        file.parent.mkdir(parents=True, exist_ok=True)
        if (root / name).is_file() and (not file.exists() or file.read_bytes() != (root / name).read_bytes()):
            shutil.copy(root / name, file)


def split_table(source, parts):
    """The kernels' table of each instruction set as one file per folder of kernels, and one that joins them; and one
    that gives the baseline the AVX2 kernels."""
    table = (source / 'src/isa/table.h').read_text()
    headers = [h for h in re.findall(r'#include "(.*)"', table) if h != 'isa/kernels.h']

    def closure(header):
        text = (source / 'src' / header).read_text()
        return text + ''.join(closure(inner) for inner in re.findall(r'#include "(.*)"', text) if inner != 'vexlor.h')
    texts = {header: closure(header) for header in headers}
    entries = collections.defaultdict(list)
    for field, function, arguments in re.findall(r'^    \.(\w+) = (\w+)(.*),$', table, re.M):
        header = next(h for h in headers if re.search(r'^(?!/)\S.*\b%s\b[( ]' % function, texts[h], re.M))
        entries[header.split('/')[0]].append((field, function + arguments))
    parts.mkdir(parents=True, exist_ok=True)
    for instructions in ('baseline', 'avx2'):
        for folder, lines in entries.items():
            (parts / f'{instructions}_{folder}.cpp').write_text(
                ''.join(f'#include "{h}"\n' for h in ['isa/kernels.h', *headers] if h.split('/')[0] in ('isa', folder)) +
                f'namespace vexlor {{\nextern const Kernels {instructions}_{folder};\n'
                f'const Kernels {instructions}_{folder} = {{\n' +
                ''.join(f'    .{field} = {value},\n' for field, value in lines) + '};\n}\n')
    for name, instructions, table in (('baseline', 'baseline', 'baseline'), ('avx2', 'avx2', 'avx2'),
                                      ('single', 'avx2', 'baseline')):
        (parts / f'{name}.cpp').write_text(
            '#include "isa/kernels.h"\nnamespace vexlor {\n' +
            ''.join(f'extern const Kernels {instructions}_{folder};\n' for folder in entries) +
            'static Kernels joined()\n{\n    Kernels all{};\n' +
            ''.join(f'    all.{field} = {instructions}_{folder}.{field};\n'
                    for folder, lines in entries.items() for field, _ in lines) +
            f'    return all;\n}}\n__attribute__((init_priority(101))) const Kernels {table}_kernels = joined();\n}}\n')
    return list(entries)


class Quick:
    """Objects of the unchanged sources, and the tests of mutants by what differs from them. clang compiles fastest, where
    it is there: by its objects most mutants are killed."""

    def __init__(self, work, seconds, step):
        self.seconds, self.source, self.build, self.objects = seconds, work / 'source', work / 'quick', work / 'objects'
        must(['cmake', '-S', self.source, '-B', self.build, '-G', 'Ninja', '-DVEXLOR_TOOLS=OFF', '-DCMAKE_BUILD_TYPE=Release',
              '-DCMAKE_CXX_FLAGS_RELEASE=-O1', f'-DVEXLOR_TEST_STEP={step}'], 'the build could not be configured')
        must(['ninja', '-C', self.build, '-j2', 'vexlor_tests'], 'the unchanged sources do not build')
        parts = work / 'parts'
        folders = split_table(self.source, parts)
        tools = ['c++', 'clang++'] if shutil.which('clang++') else ['c++']
        self.commands = {tool: {} for tool in tools}
        for entry in json.loads((self.build / 'compile_commands.json').read_text()):
            file = pathlib.Path(entry['file'])
            words = shlex.split(entry['command'])
            flags = [w for w in words[1:words.index('-o')] if not re.match(r'-g$|-W', w)]
            is_isa = file.parent.name == 'isa' and file.stem in ('baseline', 'avx2')
            names = [file.stem, *(f'{file.stem}_{f}' for f in folders), *(['single'] if file.stem == 'avx2' else [])]
            for tool, commands in self.commands.items():
                if '/vexlor_tests.dir/' in entry['command']:
                    commands[file] = ['c++', *flags], self.build / words[words.index('-o') + 1]
                elif '/vexlor_objects.dir/' in entry['command']:
                    for one in [parts / f'{name}.cpp' for name in names] if is_isa else [file]:
                        command = [tool, *flags] if tool == 'c++' else \
                            [tool, *(f for f in flags if not f.startswith('-fno-tree')), '-O0', '-w']
                        commands[one] = command, self.objects / f'{tool}_{one.parent.name}_{one.stem}.o'
        (self.objects / 'out').mkdir(parents=True, exist_ok=True)
        self.share_headers(work / 'common' / 'common.h')
        self.seen_by = collections.defaultdict(list)
        for file in self.commands['c++']:
            self.find_dependencies(file)
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            for commands in self.commands.values():
                list(pool.map(lambda c: c[1][1].parent != self.objects or self.compile_unchanged(c[0], *c[1]),
                              commands.items()))
        libraries = [self.build / 'tools/golden/libvexlor_golden.a',
                     *(self.build / 'lib' / f'libgtest{m}.a' for m in ('_main', ''))]
        self.link = [p for p in libraries if p.exists()]
        for tool in tools:
            if why := self.tests(tool, {}, self.objects, ['*'], 'baseline' if tool != 'c++' else 'single'):
                sys.exit(f'mutate: the unchanged sources fail with {tool}: {why}')

    def share_headers(self, common):
        """The headers of the instruction sets are a third of the work."""
        common.parent.mkdir(parents=True, exist_ok=True)
        common.write_text('#include <immintrin.h>\n#include <stdarg.h>\n#include <stdint.h>\n')
        made = {}
        for commands in self.commands.values():
            for file, (command, out) in commands.items():
                if out.parent != self.objects:
                    continue
                if tuple(command) not in made:
                    folder = common.parent / f'{len(made)}'
                    folder.mkdir(exist_ok=True)
                    shutil.copy(common, folder)
                    made[tuple(command)] = folder / common.name
                    must([*command, '-x', 'c++-header', folder / common.name, '-o', folder / (common.name + '.gch')],
                         'no common header')
                header = str(made[tuple(command)])
                commands[file] = [command[0], *(['-include', header] if command[0] == 'c++' else
                                                ['-include-pch', header + '.gch']), *command[1:]], out

    def find_dependencies(self, file):
        command, out = self.commands['c++'][file]
        # Tests that see a header only through another one of the tests use its types alone.
        folders = '|'.join(f.name for f in (self.source / 'src').iterdir() if f.is_dir())
        if out.parent == self.objects or re.search(r'^#include "(%s)/' % folders, file.read_text(), re.M):
            rule = must([*command, '-MM', file], 'no dependencies')
            for name in re.split(r'[\s\\]+', rule.split(':', 1)[1]):
                if name.startswith(str(self.source / 'src')):
                    self.seen_by[pathlib.Path(name).relative_to(self.source)].append(file)

    def compile_unchanged(self, file, command, out):
        must([*command, '-c', file, '-o', out], 'an object could not be compiled')

    def compile(self, tool, overlay, file, names, changed):
        """Adds to the changed objects those that differ; False when one does not compile."""
        for name in names:
            command, unchanged = self.commands[tool][name]
            out = overlay / f'{tool}_{name.parent.name}_{name.stem}.o'
            text = overlay / file if name == self.source / file else name
            if run(limited(120, [command[0], f'-I{overlay / "src"}', *command[1:], '-c', text, '-o', out])).returncode != 0:
                return False
            if out.read_bytes() != unchanged.read_bytes():
                changed[unchanged] = out
        return True

    def tests(self, tool, changed, folder, filters, left_out='single'):
        program = folder / 'tests'
        objects = [changed.get(out, out) for file, (_, out) in self.commands[tool].items()
                   if self.instructions(file) != left_out]
        if run(['c++', '-o', program, *objects, *self.link, '-lpthread']).returncode != 0:
            return 'the link'
        return next(filter(None, (killed_by(self.seconds, [program, f'--gtest_filter={f}'], cwd=folder) for f in filters)), '')

    def verdict(self, overlay, file, text, likely):
        """Whatever runs was built from the mutant in whole: a constant may be wrong in two places to the same effect."""
        shutil.rmtree(overlay / 'src', ignore_errors=True)
        (overlay / file).parent.mkdir(parents=True)
        (overlay / file).write_text(text)
        names = [n for n in self.seen_by[file] if self.instructions(n) != 'baseline']
        changed = {}
        if likely and 'clang++' in self.commands and self.compile('clang++', overlay, file, names, changed) and changed and \
                (killer := self.tests('clang++', changed, overlay, likely, 'baseline')):
            return 'killed', killer
        changed = {}
        names = [n for n in self.seen_by[file] if self.instructions(n) != 'single']
        if not self.compile('c++', overlay, file, names, changed):
            return 'invalid', ''
        if not changed:
            return 'equivalent', ''
        killer = self.tests('c++', changed, overlay, [':'.join(likely), f'*-{":".join(likely)}'] if likely else ['*'])
        return ('killed' if killer else 'survived'), killer

    def instructions(self, file):
        return file.stem.split('_')[0] if self.source not in file.parents else ''


class Default:
    """The build and the tests of ./check."""

    def __init__(self, work, texts):
        self.source, self.build, self.texts, self.mutant = work / 'default-source', work / 'default', texts, None
        copy_sources(self.source)
        must(['cmake', '-S', self.source, '-B', self.build, '-G', 'Ninja', '-DVEXLOR_WERROR=OFF'], 'no default build')
        self.make()
        if why := self.killer():
            sys.exit(f'mutate: the unchanged sources fail: {why}')

    def make(self):
        return run(['ninja', '-C', self.build, '-j2']).returncode == 0

    def killer(self):
        return killed_by(600, ['ctest', '--stop-on-failure'], cwd=self.build)

    def killed_by(self, file, text):
        if self.mutant and self.mutant != file:
            (self.source / self.mutant).write_text(self.texts[self.mutant])
        self.mutant = file
        (self.source / file).write_text(text)
        return self.killer() if self.make() else 'the build'


def explanations():
    """What survivors.txt says: by file and changed line, whether all bytes stay, and why."""
    found = {}
    text = (here / 'survivors.txt').read_text() if (here / 'survivors.txt').exists() else ''
    for file, old, new, why in re.findall(r'^(src/\S+)\n- (.*)\n\+ (.*)\n((?:(?!src/)\S.*\n?)+)', text, re.M):
        found[file, old, new] = ' '.join(why.split())
    return found


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument('--count', type=int, default=500, help='mutants that count (default: 500)')
    options.add_argument('--seed', type=int, default=1)
    options.add_argument('--seconds', type=int, default=60, help='processor time for the tests of a mutant (default: 60)')
    options.add_argument('--jobs', type=int, default=1, help='mutants at a time')
    options.add_argument('--default', action='store_true', help='run the whole suite for what survives')
    options.add_argument('--again', action='store_true', help='try survivors once more, but for those of the same bytes')
    options.add_argument('--step', type=int, default=8, help='of the sweeps of the quick tests (default: 8; 1 is all)')
    options.add_argument('--report', action='store_true', help='say what is known, and try nothing')
    options.add_argument('--only', default='', help='files whose name contains this')
    options.add_argument('--work', type=pathlib.Path, default=root / 'build' / 'mutation')
    chosen = options.parse_args()

    work = chosen.work.resolve()
    copy_sources(work / 'source')
    source = work / 'source'
    texts = {f.relative_to(source): f.read_text() for f in sorted((source / 'src').rglob('*'))
             if f.suffix in ('.h', '.cpp') and f.name != 'avx512.cpp'}
    log = work / f'results-{chosen.seed}-{hashlib.sha256(str(texts).encode()).hexdigest()[:12]}.json'
    results = {}
    if log.exists():
        results = {tuple(r['mutant']): r for r in map(json.loads, log.read_text().splitlines())}
    quick = None if chosen.report else Quick(work, chosen.seconds, chosen.step)
    killers = collections.defaultdict(collections.Counter)
    lock, free = threading.Lock(), [work / f'mutant-{i}' for i in range(chosen.jobs)]

    def key(mutant):
        return (str(mutant[0]), *mutant[1:])

    known = explanations()

    def explained(mutant):
        file, line = mutant[:2]
        old = texts[file].split('\n')[line].strip()
        new = mutated(texts[file], *mutant[1:]).split('\n')[line].strip()
        return old, new, known.get((str(file), old, new), 'not explained')

    def is_same(mutant):
        return explained(mutant)[2].startswith('Same bytes')

    def note(mutant, verdict, killer, started):
        result = {'mutant': key(mutant), 'verdict': verdict, 'killer': killer,
                  'seconds': round(time.monotonic() - started, 1)}
        results[key(mutant)] = result
        with log.open('a') as out:
            out.write(json.dumps(result) + '\n')
        file, line, _, old, new = mutant
        print(f"{verdict:10} {file}:{line + 1}: '{old.strip()}' -> '{new.strip()}' {killer} {result['seconds']} s", flush=True)

    def attempt(mutant):
        file, folder, started = mutant[0], mutant[0].parts[1], time.monotonic()
        with lock:
            overlay = free.pop()
            likely = [t for t, _ in killers[file].most_common(2) + killers[folder].most_common(2)]
        verdict, killer = quick.verdict(overlay, file, mutated(texts[file], *mutant[1:]), list(dict.fromkeys(likely)))
        with lock:
            free.append(overlay)
            note(mutant, verdict, killer, started)
            if '.' in killer:
                killers[file][killer] += 1
                killers[folder][killer] += 1

    order = list(sample({file: m for file, text in texts.items()
                         if chosen.only in str(file) and (m := mutants_of(file, text))}, chosen.seed))
    for mutant in order:
        if (result := results.get(key(mutant))) and '.' in result['killer']:
            killers[mutant[0]][result['killer']] += 1
            killers[mutant[0].parts[1]][result['killer']] += 1
    counted = []
    with concurrent.futures.ThreadPoolExecutor(chosen.jobs) as pool:
        ahead = collections.deque()
        rest = iter(order)
        while sum(results[key(m)]['verdict'] in ('killed', 'survived') for m in counted) < chosen.count:
            while len(ahead) < 8 * chosen.jobs and (mutant := next(rest, None)):
                before = results.get(key(mutant))
                if chosen.report or before and not (chosen.again and before['verdict'] == 'survived' and not is_same(mutant)):
                    ahead.append((mutant, None))
                else:
                    ahead.append((mutant, pool.submit(attempt, mutant)))
            if not ahead:
                break
            mutant, future = ahead.popleft()
            if future:
                future.result()
            if key(mutant) in results:
                counted.append(mutant)
    survivors = [m for m in counted if results[key(m)]['verdict'] == 'survived' and not is_same(m)]
    if chosen.default and survivors:
        default = Default(work, texts)
        for mutant in survivors:
            started = time.monotonic()
            killer = default.killed_by(mutant[0], mutated(texts[mutant[0]], *mutant[1:]))
            note(mutant, 'killed' if killer else 'survived', killer, started)

    counts = collections.Counter(results[key(m)]['verdict'] for m in counted)
    tried, same = counts['killed'] + counts['survived'], 0
    for mutant in counted:
        if results[key(mutant)]['verdict'] == 'survived':
            old, new, why = explained(mutant)
            same += is_same(mutant)
            print(f'{mutant[0]}:{mutant[1] + 1}\n- {old}\n+ {new}\n{why}')
    print(f"{counts['killed']} of {tried} mutants killed, {100 * counts['killed'] / max(tried, 1):.1f} %, "
          f"{100 * counts['killed'] / max(tried - same, 1):.1f} % without the {same} that provably write the same bytes; "
          f"{counts['equivalent']} with the same code and {counts['invalid']} that do not compile are left out")


main()
