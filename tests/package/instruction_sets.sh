#!/bin/sh
# Checks which instructions a 32-bit library has: instruction_sets.sh <libvexlor.a>
# The library runs on a plain 686, its SSE routines on a processor that has SSE and no SSE2.
set -eu
objdump -d --no-show-raw-insn "$1" | awk '
    /file format/ { object = $1; next }
    object ~ /(_sse2|avx2|avx512)\.cpp/ || !/^ *[0-9a-f]+:\t/ { next }
    { sub(/^[^\t]*\t/, "") }
    # Instructions of a vector set: by their registers, or by name where they have none.
    !/%[xyz]?mm[0-7]/ && $1 !~ /^([slm]fence|prefetch.*|clflush|movnti|(ld|st)mxcsr|pause)$/ {
        plain[object] = 1
        next
    }
    # Of the first generation, as far as moving bytes takes them.
    object ~ /_sse\.cpp/ && $1 ~ /^(mov(a|u|l|h|nt|lh|hl)ps|movss|xorps|shufps|unpck[lh]ps|sfence)$/ {
        used[$1] = 1
        next
    }
    { print object " " $0; bad = 1 }
    END {
        if (!("memory.cpp.o:" in plain)) { print "no objects"; bad = 1 }
        if (!("movntps" in used && "sfence" in used)) { print "no streaming stores or no fence"; bad = 1 }
        exit bad
    }'
