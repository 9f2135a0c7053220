#!/bin/sh
# Compares the shared library's binary interface, names, signatures and record layouts, with the stored one:
# abi.sh <libvexlor.so> <stored file>. With VEXLOR_STORE_ABI=1 in the environment it stores what is.
# Only what every compiler tells alike is stored: no places in the sources, no folders, no parameter names.
set -eu
so=$1 stored=$2
if ! command -v abidw >/dev/null; then
    echo "skipped: there is no abidw here (Debian has it in abigail-tools)"
    exit 77
fi
now=$(mktemp)
trap 'rm -f "$now"' EXIT
abidw --no-comp-dir-path --no-corpus-path --no-show-locs --no-elf-needed --no-parameter-names \
    --drop-undefined-syms --exported-interfaces-only --type-id-style hash --out-file "$now" "$so"
if [ "${VEXLOR_STORE_ABI-}" ]; then
    cp "$now" "$stored"
fi
grep -q "function-decl name='vexlor_copy'" "$now" || { echo "$so has no debugging information"; exit 1; }
abidiff "$stored" "$now" || { echo "If this is meant, run the test with VEXLOR_STORE_ABI=1 in the environment"; exit 1; }
