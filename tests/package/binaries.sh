#!/bin/sh
# Checks the built libraries: binaries.sh <libvexlor.so> <libvexlor.a> <vexlor.h> <landing pads: 1 or nothing>
set -eu
export LC_ALL=C
so=$1 archive=$2 header=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
expect() { # <what> <file with what is> <file with what should be>
    diff "$3" "$2" >"$work/diff" && return
    echo "$1 (< should be, > is):"
    cat "$work/diff"
    failed=1
}

# The exported names are those that the header declares: no fewer and no more.
sed -nE 's/^VEXLOR_API [^(;]*[ *]((vexlor|VEXLOR)_[A-Za-z0-9_]+) *[(;[].*/\1/p' "$header" | sort >"$work/declared"
test -s "$work/declared"
nm -D --defined-only "$so" | awk '$2 != "A" { print $NF }' | sort >"$work/versioned"
sed 's/@@VEXLOR_1$//' "$work/versioned" | sort >"$work/exported"
expect "exported names" "$work/exported" "$work/declared"
grep -c '^VEXLOR_API' "$header" >"$work/lines"
wc -l <"$work/declared" >"$work/names"
expect "declarations understood" "$work/names" "$work/lines"

# It needs the C library and nothing else.
readelf -dW "$so" | sed -nE 's/.*\((NEEDED|SONAME)\).*\[(.*)\]/\1 \2/p' | sort >"$work/dynamic"
printf 'NEEDED libc.so.6\nSONAME libvexlor.so.1\n' >"$work/wanted"
expect "dynamic section" "$work/dynamic" "$work/wanted"

# No code runs when it is loaded, and it has no variables. (.data.rel.ro is constant once loaded.)
readelf -SW "$archive" | sed -nE 's/^ *\[ *[0-9]+\] +//p' |
    awk '$1 ~ /^\.(init_array|ctors|fini_array|dtors)/ ||
         ($2 ~ /BITS/ && $7 ~ /W/ && $1 !~ /^\.data\.rel\.ro/ && $5 !~ /^0+$/) { print $1, $5 }' >"$work/state"
: >"$work/none"
expect "initialisers and variables" "$work/state" "$work/none"
readelf -SW "$so" | awk '/ \.(init_array|ctors) / { print $0 }' | sed -nE 's/^ *\[ *[0-9]+\] +//p' |
    awk '$5 !~ /^0+([48]|10)$/ { print $1, $5 }' >"$work/start" # up to two entries are the compiler's own
expect "initialisers of the shared library" "$work/start" "$work/none"

# Hardened: all relocations are done before it runs, and read-only then; the stack is not executable.
{
    readelf -lW "$so" | awk '$1 == "GNU_STACK" { print $1, $7 } $1 == "GNU_RELRO" { print $1 }'
    readelf -dW "$so" | grep -o 'Flags: NOW'
} >"$work/hardening"
printf 'GNU_STACK RW\nGNU_RELRO\nFlags: NOW\n' >"$work/wanted"
expect "hardening" "$work/hardening" "$work/wanted"
# Every object has landing pads for indirect jumps, where the compiler makes them. (The library as a whole is marked
# only where the C library's own start files are.)
readelf -nW "$archive" | awk '/^File:/ { ++files } /IBT, SHSTK/ { ++pads } END { print files - pads }' >"$work/padless"
echo 0 >"$work/wanted"
if [ "$4" ]; then
    expect "objects without landing pads" "$work/padless" "$work/wanted"
fi
# Canaries where there are arrays on the stack, and none in row routines, which they would slow down.
nm -A --undefined-only "$archive" | awk '/__stack_chk_fail/ { split($1, at, ":"); print at[2] }' >"$work/canaries"
grep -E '^(baseline|avx|memory|gauss|mean|nofilter_spans)|rows' "$work/canaries" >"$work/slowed" || true
expect "row routines with canaries" "$work/slowed" "$work/none"
if ! test -s "$work/canaries"; then
    echo "no canaries anywhere"
    failed=1
fi
exit $failed
