#!/bin/sh
# Makes the Debian packages of a build below /usr and looks into them: debs.sh <build folder> <cpack> <sources>
set -eu
build=$1 cpack=$2 sources=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$cpack" --config "$build/CPackConfig.cmake" -B "$work/debs" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cd "$work/debs"

for package in libvexlor1 libvexlor-dev libvexlor-doc vexlor-tools; do
    dpkg-deb -x ${package}_*.deb "$work/root"
    for file in copyright changelog.Debian.gz; do
        test -s "$work/root/usr/share/doc/$package/$file" || { echo "$package has no $file"; exit 1; }
    done
done
dpkg-deb -f libvexlor-dev_*.deb Depends | grep -q '^libvexlor1 (= 1' || { echo "dev does not depend on lib"; exit 1; }
for package in libvexlor1 vexlor-tools; do
    dpkg-deb -f ${package}_*.deb Depends | grep -q 'libc6 (>= ' || { echo "$package does not depend on libc6"; exit 1; }
done
soname=$(find "$work/root" -name libvexlor.so.1)
test "$(readlink "$soname")" = libvexlor.so.1.0.0 && test "$(readlink "${soname%.1}")" = libvexlor.so.1 ||
    { echo "symbolic links are not what they should be"; exit 1; }
cc "$sources/tests/package/picture.c" -I"$work/root/usr/include" "${soname%.1}" -o "$work/picture"
LD_LIBRARY_PATH=$(dirname "$soname") "$work/picture"

if ! command -v lintian >/dev/null; then
    echo "not looked at by lintian, which is not here"
    exit
fi
# The maintainer's address is to be set by who gives packages out, and nobody has asked Debian for them.
lintian --allow-root --fail-on error,warning --suppress-tags \
    bogus-mail-host,bogus-mail-host-in-debian-changelog,initial-upload-closes-no-bugs ./*.deb
