#!/bin/bash
# Builds the Debian packages from the tracked files, and prints their paths.
# Usage: build_deb.sh [OUTPUT_FOLDER]     default: build/packages
# Installs the packages that the build needs. The same sources give the same bytes, in whatever folder.
set -euo pipefail
here=$(cd -- "$(dirname -- "$0")" && pwd)
root=$(dirname -- "$here")

if [ $# -gt 1 ] || [[ ${1:-} == -* ]]; then
    echo "Usage: build_deb.sh [OUTPUT_FOLDER]" >&2
    exit 2
fi
output=$(realpath -m -- "${1:-$root/build/packages}")

"$root/tools/install_packages.sh" build package

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree=$work/vantorix-jukebox
mkdir "$tree"
# In a clone: what git tracks, as it is in the working folder. In an unpacked archive: everything but the build folder.
# Times and rights must not depend on the clone: the files get the date of the package's changelog.
epoch=$(dpkg-parsechangelog -l "$here/debian/changelog" -S Timestamp)
if git -C "$root" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git -C "$root" ls-files -z
else
    (cd -- "$root" && find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0)
fi | tar -C "$root" --null --no-recursion -T - --mtime="@$epoch" --mode=u=rwX,go=rX -c | tar -C "$tree" -x
cp -a "$tree/packaging/debian" "$tree/debian"

mkdir -p "$output"
jobs=$(nproc)
log=$output/build.log
if ! (
    cd -- "$tree"
    # Without a package of debug symbols the compiler need not make them.
    export LC_ALL=C.UTF-8 DEB_BUILD_OPTIONS="noautodbgsym parallel=$jobs" DEB_CXXFLAGS_STRIP=-g
    "$root/tools/progress.sh" "Building the packages" "$log" dpkg-buildpackage -b -us -uc
); then
    # The compiler's errors come before CMake's settings.
    grep -m 20 -A 3 -iE '(^|[ :])error[: ]' "$log" >&2
    echo "build_deb.sh: the build has failed; everything that it printed is in $log" >&2
    exit 1
fi
mv -f "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$output/"
ls "$output"/*.deb
