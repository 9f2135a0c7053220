#!/bin/sh
# Installs the library into an empty folder, builds and runs programs against it by every road, and uninstalls it:
# consumers.sh <sources> <build folder> <cc> <c++> <cmake> <generator> <flags>
set -eu
sources=$1 build=$2 cc=$3 cxx=$4 cmake=$5 generator=$6 flags=$7
here=$sources/tests/package
work=$(mktemp -d)
# What was installed before may still be uninstalled after.
manifest=$build/install_manifest.txt
if [ -f "$manifest" ]; then
    mv "$manifest" "$work/manifest"
fi
tidy()
{
    rm -f "$manifest"
    if [ -f "$work/manifest" ]; then
        mv "$work/manifest" "$manifest"
    fi
    rm -rf "$work"
}
trap tidy EXIT
prefix=$work/installed

quietly() # <what> <command...>
{
    what=$1
    shift
    "$@" >"$work/log" 2>&1 && return
    cat "$work/log"
    echo "failed: $what"
    exit 1
}
consume() # <name> <programs> <options...>
{
    name=$1 programs=$2
    shift 2
    quietly "$name: configure" "$cmake" -S "$here/consumer" -B "$work/$name" -G "$generator" \
        -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_BUILD_TYPE=Debug -DPICTURE="$here/picture.c" "$@"
    quietly "$name: build" "$cmake" --build "$work/$name"
    for program in $programs; do
        quietly "$name: run $program" "$work/$name/$program"
    done
}

quietly install "$cmake" --install "$build" --prefix "$prefix"
mv "$prefix" "$work/moved" # what was installed may be moved
consume package_c "c_shared c_static" -DCMAKE_PREFIX_PATH="$work/moved"
consume package_cpp "c_shared c_static cpp_shared cpp_static" -DCXX=ON -DCMAKE_PREFIX_PATH="$work/moved"
consume sources "c_shared c_static cpp_shared cpp_static" -DCXX=ON -DSOURCES="$sources" -DVEXLOR_ISA=baseline
if [ -d "$work/sources/vexlor/tests" ]; then
    echo "taken in by another project, the library builds its tests"
    exit 1
fi

# pkg-config and the C compiler alone.
PKG_CONFIG_PATH=$(dirname "$(find "$work/moved" -name vexlor.pc)")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir vexlor)
quietly "pkg-config, shared" "$cc" $flags "$here/picture.c" $(pkg-config --cflags --libs vexlor) -o "$work/shared"
quietly "pkg-config, shared: run" env LD_LIBRARY_PATH="$libdir" "$work/shared"
readelf -dW "$work/shared" | grep -q 'NEEDED.*\[libvexlor.so.1\]' || { echo "not linked by the name libvexlor.so.1"; exit 1; }
quietly "pkg-config, static" "$cc" $flags "$here/picture.c" $(pkg-config --cflags vexlor) "$libdir/libvexlor.a" -o "$work/static"
quietly "pkg-config, static: run" "$work/static"

mv "$work/moved" "$prefix"
quietly uninstall "$cmake" -P "$build/uninstall.cmake"
if [ "$(find "$prefix" ! -type d)" ]; then
    find "$prefix" ! -type d
    echo "these were left by uninstall"
    exit 1
fi
