#!/bin/sh
# quiet.sh <libvexlor.so> <program that draws with it>: the library touches no file, environment variable or network.
set -eu
export LC_ALL=C
so=$1 program=$2 failed=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
report() # <what> <file with what should not be>
{
    if [ -s "$2" ]; then
        echo "$1:"
        cat "$2"
        failed=1
    fi
}

# It takes memory from the C library, has it copied and set and asks how large the caches are, nothing else, and calls no
# system by itself.
nm -D --undefined-only "$so" | awk '{ sub(/@.*/, "", $NF); print $NF }' |
    grep -vxE '_ITM_.*|__gmon_start__|__cxa_finalize|__stack_chk_fail|malloc|calloc|free|memalign|(__)?mem(cpy|move|set)(_chk)?|sysconf' \
        >"$work/imports" || true
report 'taken from other libraries' "$work/imports"
objdump -d --no-show-raw-insn "$so" >"$work/code"
grep -q memalign "$work/code"
grep -E '	(syscall|sysenter|int +\$0x80)' "$work/code" >"$work/calls" || true
report 'system calls of its own' "$work/calls"

# A program that draws: what it opens is what the loader opens, and nothing else leaves the process.
command -v strace >/dev/null || { echo 'strace is missing'; exit 77; }
strace -f -e trace=%file,%network,write -o "$work/trace" "$program"
grep -qE 'openat\(.*libvexlor\.so\.1.* = [0-9]' "$work/trace"
beside=$(cd "$(dirname "$so")" && pwd) # where the loader looks first
sed -E 's/^[0-9]+ +//' "$work/trace" |
    grep -vE '^execve|^\+\+\+ exited|"[^"]*/(ld\.so\.(cache|preload)|lib(vexlor|c)\.so\.[0-9])"|^[a-z0-9]*stat[a-z0-9]*\([0-9]+, ""' |
    grep -vF "\"$beside/" >"$work/others" || true
report 'other system calls' "$work/others"
exit $failed
