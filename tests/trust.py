#!/usr/bin/env python3
"""Writes docs/trust.md: what is proven about the library, with the command that gives each figure. Counts are taken from
the sources, and the number of tests from a build (trust.py [BUILD]; build/release without); what takes long to measure
stands in measured.txt, with date and command."""
import pathlib
import re
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parents[1]
build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else root / 'build/release')


def text(name):
    return (root / name).read_text()


def count(pattern, *names):
    return sum(len(re.findall(pattern, text(name), re.M)) for name in names)


measured = {}
for line in text('tests/measured.txt').splitlines():
    if line and not line.startswith('#'):
        name, figure, date, command = [part.strip() for part in line.split(' | ')]
        measured[name] = (figure, date, command)

listed = subprocess.check_output(['ctest', '--test-dir', build, '-N'], text=True)
tests = re.search(r'Total Tests: (\d+)', listed).group(1)
exported = count(r'^VEXLOR_API', 'include/vexlor.h')
paths = count(r'^    .Entry::', 'tests/context/refusals_test.cpp')
explained = count(r'^src/', 'tests/coverage.txt')
table = text('tests/support/row_table.h')
rows = count(r'^    (?:(?:units|blocks|span|filter_row|memory_row)<|\{Kind)', 'tests/support/row_table.h')
golden = count(r'\b[0-9a-f]{16}\b', 'tests/golden.txt')
calls = sum(int(n) for name in ('fill/fill', 'copy/copy', 'scale/calls')
            for n in re.findall(r'rounds_of\((\d+)\)', text(f'tests/{name}_test.cpp')))
targets = [name[len('fuzz '):] for name in measured if name.startswith('fuzz ')]


def corpus(target):
    return sum(1 for _ in (root / 'fuzz/corpus' / target).iterdir())


def measure(name):
    figure, date, command = measured[name]
    return f'{figure} | {date} | `{command}`'


fuzzers = '\n'.join(f'| {target} | {measured["fuzz " + target][0]} | {corpus(target)} | {measured["fuzz " + target][1]} |'
                    for target in targets)
page = f'''# What is proven, and by what

Written by `tests/trust.py`: counts come from the sources, figures of long runs from `tests/measured.txt`, with the day on
which their command ran. `./check` builds and runs the default suite; `./check --all` runs it for 64 and 32 bit, with g++
and clang, and under the address and undefined-behaviour sanitizers. `-R NAME` below is short for
`ctest --preset release -R NAME`, after `./check`.

| what is counted | figure | command |
| --- | ---: | --- |
| tests of the default suite | {tests} | `./check` |
| names that the header declares, and the library exports, no more and no fewer | {exported} | `-R package.binaries` |
| row routines beside pages without access | {rows} | `-R Rows` |
| golden checksums | {golden} | `vexlor sum --check tests/golden.txt` |
| random drawing calls | {calls:,} | `-R 'EqualsTheModelInCode\\|ScaleCalls.EqualTheModel'` |

| what takes long | figure | day | command |
| --- | --- | --- | --- |
| random drawing calls | {measure('random calls')} |
| lines of `src/` | {measure('coverage lines')} |
| branches of `src/` | {measure('coverage branches')} |
| mutants killed | {measure('mutation')} |
| 16 threads that share their sources, under the thread sanitizer | {measure('thread')} |
| what draws, under valgrind: memory that nobody wrote, leaks | {measure('valgrind')} |

## Memory

Every routine that takes rows runs at 0 to 130 pixels (memory routines: 0 to 523 bytes), at 16 alignments of either side,
in memory of exactly the bytes that it may touch, which ends, or begins, at a page without access. The rest of that page
is compared byte by byte. So run all instruction sets that the processor has, one by one, on a processor with AVX-512 and
on one without; an emulated one serves, too (`tests/isa/emulate`). Whole drawing calls get surfaces of the same kind, with
gaps between their rows.

## Values

Models in `tests/support` compute one byte at a time and share nothing with `src/`. Rows are compared with them for all
values that meet in a pixel (`-R EveryValue`): 256 source by 256 destination bytes under each of 256 alphas or 257 weights,
each of 65,536 565 pixels under each weight, all 2^24 colours from YUV to RGB and back, in each order of bytes and each
instruction set. Slow builds look at every eighth step. Some pixels are known beforehand (`-R Known`), so that models and
library cannot stray together. The golden checksums are of every operation in every setting; one table serves 64 and 32
bit, g++ and clang, and every instruction set (`-R Golden`).

## Calls

Random drawing calls, right and wrong, are compared with models of whole calls: the result code and every byte. Refusals
have {paths} paths through the three entry points: each rule of a path is broken alone and with every other, the first one's
code comes back, and nothing is written (`-R Refusals`).

## Fuzzers

libFuzzer with clang 14, address and undefined-behaviour sanitizers; the targets compare with the models, too. The default
suite replays each corpus, and 10,000 random inputs for each target (`-R fuzz`). Longer runs: `fuzz/build.sh`, then
`build/fuzz/NAME -max_len=512 -max_total_time=1200 build/fuzz/new fuzz/corpus/NAME`.

| target | last long run | files in the corpus | day |
| --- | --- | ---: | --- |
{fuzzers}

None of these runs found a fault in the library.

## Circumstances

- **Allocations that fail:** each allocation of every path fails in turn, in the library (`-R NoMemory`) and in the tool
  (`-R tools.no_memory`): no crash, no leak, all drawn or nothing.
- **Floating-point environment:** four rounding modes, flushed denormals, both x87 precisions: integer rows give the same
  bytes, and control words, the stack and preserved registers are as they were (`-R Environment`).
- **Quiet:** no file, environment variable or network, by `strace` and by the names that are imported
  (`-R package.quiet`).
- **Hardened:** relocations read-only before the program runs, no executable stack, canaries outside of row routines,
  landing pads for indirect jumps, no constructors, no variables (`-R package.binaries`).

## Coverage

The command fails where a line or branch that no test takes has no reason in `tests/coverage.txt`. It holds {explained}
reasons: other processors, sizes beyond the address space, what an earlier check excludes, a routine that ends its
process. Code of AVX-512 is left out of this build.
'''
(root / 'docs/trust.md').write_text(page)
