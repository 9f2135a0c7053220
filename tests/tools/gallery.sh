#!/bin/sh
# gallery.sh TOOL FOLDER: the gallery drawn anew has the checksums that the folder lists, and the folder's pictures are
# the same. Pixels are compared, not files, which look different from one libpng to the next.
set -u
tool=$1 folder=$2
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 1
failures=0

"$tool" sheet -o gallery >drawn || exit 1
if ! diff "$folder/checksums.txt" drawn; then
    echo 'FAILED: the gallery is drawn otherwise; docs/draw draws it anew'
    failures=1
fi
for name in $(ls "$folder" gallery | grep '\.png$' | sort -u); do
    if ! "$tool" diff "$folder/$name" "gallery/$name" >said 2>&1; then
        echo "FAILED: $folder/$name: $(cat said)"
        failures=1
    fi
done
exit $failures
