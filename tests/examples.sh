#!/bin/sh
# Runs an example and compares its picture: examples.sh <program> <checksums>
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
"$1"
grep " $(basename "$1")\.ppm\$" "$2" >wanted || { echo "there is no checksum for this picture"; exit 1; }
sha256sum -c wanted
