#!/bin/sh
# no_memory.sh TOOL PRELOADED: one allocation after the other fails. A command then ends as ever, or with one line, its
# exit status and no file; never by a signal.
set -u
tool=$1 preloaded=$2 failures=0
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 1
"$tool" scene day --size 16x8 -o good.png >/dev/null && "$tool" copy good.png --to U8Y8V8Y8 -o good.yuv >/dev/null || exit 1

while read -r command; do
    failed=0
    for at in $(seq 1 50) $(seq 57 29 5000); do
        rm -f out.png
        # shellcheck disable=SC2086 # the arguments are words
        LD_PRELOAD=$preloaded VEXLOR_FAIL_AT=$at "$tool" $command -o out.png >out 2>err </dev/null
        status=$?
        if [ $status = 2 ] && [ "$(wc -l <err)" = 1 ] && [ -z "$(find . -name 'out.png*')" ]; then
            failed=$((failed + 1))
        elif [ $status != 0 ] || [ ! -s out.png ]; then
            echo "FAILED: vexlor $command: allocation $at fails, status $status: $(cat err)"
            failures=$((failures + 1))
        fi
    done
    [ $failed -gt 100 ] || { echo "FAILED: vexlor $command: only $failed runs failed"; failures=$((failures + 1)); }
done <<END
copy good.png --to B8G8R8A8
scale good.yuv --raw-format U8Y8V8Y8 --raw-size 16x8 --to X8R8G8B8 --size 9x5 --filter catrom
END
[ $failures = 0 ] && echo 'no command lost its way'
