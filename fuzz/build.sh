#!/bin/sh
# Builds the fuzz targets as an OSS-Fuzz project does, from its variables: CC, CXX, CFLAGS, CXXFLAGS,
# LIB_FUZZING_ENGINE, OUT, WORK. Without them: clang, libFuzzer, address and undefined-behaviour sanitizers, build/fuzz.
set -eu
source=$(cd "$(dirname "$0")/.." && pwd)
out=${OUT:-$source/build/fuzz} work=${WORK:-$source/build/fuzz-work}
flags='-O1 -g -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all'
export CFLAGS="${CFLAGS-$flags}" CXXFLAGS="${CXXFLAGS-$flags}" CC="${CC:-clang}" CXX="${CXX:-clang++}"

# Programs find what they are linked with beside them: they run in other machines than they are built in.
cmake -S "$source" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=None -DVEXLOR_BENCH=OFF \
    -DCMAKE_BUILD_RPATH='$ORIGIN/lib' -DVEXLOR_FUZZING_ENGINE="${LIB_FUZZING_ENGINE:--fsanitize=fuzzer}"
mkdir -p "$out/lib"
for file in "$source"/fuzz/*.cpp; do
    name=$(basename "$file" .cpp)
    [ "$name" != replay ] || continue
    cmake --build "$work" --target "vexlor_fuzz_$name"
    cp "$work/fuzz/$name" "$out/"
    ldd "$work/fuzz/$name" | awk '$1 ~ /^lib(png|turbojpeg|z)/ { print $3 }' | xargs -r cp -L -t "$out/lib"
    [ ! -f "$source/fuzz/$name.dict" ] || cp "$source/fuzz/$name.dict" "$out/"
    if command -v zip >/dev/null; then
        rm -f "$out/${name}_seed_corpus.zip"
        zip -q -j -r "$out/${name}_seed_corpus.zip" "$source/fuzz/corpus/$name"
    fi
done
