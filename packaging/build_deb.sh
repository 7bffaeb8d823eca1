#!/bin/bash
# Builds the Debian packages from the tracked files, and prints their paths.
# Usage: build_deb.sh [arm64] [OUTPUT_FOLDER]     default: build/packages, or build/packages/arm64
# Installs the packages that the build needs. The same sources give the same bytes, in whatever folder.
# On an amd64 machine "arm64" cross-builds the package for arm64, in a root of its own (packaging/arm64/root.sh). The other
# packages are the same for all machines and come from the build without it.
set -euo pipefail
here=$(cd -- "$(dirname -- "$0")" && pwd)
root=$(dirname -- "$here")

native=$(dpkg --print-architecture)
architecture=$native
if [ "${1:-}" = arm64 ]; then
    architecture=arm64
    shift
fi
if [ $# -gt 1 ] || [[ ${1:-} == -* ]]; then
    echo "Usage: build_deb.sh [arm64] [OUTPUT_FOLDER]" >&2
    exit 2
fi
output=$root/build/packages
[ "$architecture" = "$native" ] || output=$output/$architecture
output=$(realpath -m -- "${1:-$output}")

# What runs a command where the packages are built, and the root of that place.
inside=()
place=
build=(dpkg-buildpackage -b)
if [ "$architecture" = "$native" ]; then
    "$root/tools/install_packages.sh" build package
else
    "$root/tools/install_packages.sh" package arm64
    export VANTORIX_ARM64_ROOT=${VANTORIX_ARM64_ROOT:-$root/build/arm64-root}
    place=$(realpath -m -- "$VANTORIX_ARM64_ROOT")
    inside=("$here/arm64/root.sh")
    build=(dpkg-buildpackage -B --host-arch "$architecture")
    "${inside[@]}" true # makes the root
fi

work=$(mktemp -d -p "${place:+$place/tmp}")
trap '"${inside[@]}" rm -rf "${work#"$place"}"' EXIT
tree=$work/vantorix-jukebox
mkdir "$tree"
# In a clone: what git tracks, as it is in the working folder. In an unpacked archive, which may be inside the clone of
# something else: everything but the build folder.
# Times and rights must not depend on the clone: the files get the date of the package's changelog.
epoch=$(dpkg-parsechangelog -l "$here/debian/changelog" -S Timestamp)
if [ "$(git -C "$root" rev-parse --show-toplevel 2>/dev/null)" = "$(realpath -- "$root")" ]; then
    git -C "$root" ls-files -z
else
    (cd -- "$root" && find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0)
fi | tar -C "$root" --null --no-recursion -T - --mtime="@$epoch" --mode=u=rwX,go=rX -c | tar -C "$tree" -x
cp -a "$tree/packaging/debian" "$tree/debian"

mkdir -p "$output"
jobs=$(nproc)
log=$output/build.log
if [ -n "$place" ] &&
    ! "$root/tools/progress.sh" "Installing packages" "$log" "${inside[@]}" apt-get build-dep -y \
        --no-install-recommends --host-architecture "$architecture" -P cross,nocheck "${tree#"$place"}"; then
    tail -n 15 "$log" >&2
    exit 1
fi
# Without a package of debug symbols the compiler need not make them.
settings=(LC_ALL=C.UTF-8 DEB_BUILD_OPTIONS="noautodbgsym parallel=$jobs" DEB_CXXFLAGS_STRIP=-g)
if ! "$root/tools/progress.sh" "Building the packages" "$log" "${inside[@]}" env -C "${tree#"$place"}" "${settings[@]}" \
    "${build[@]}" -us -uc; then
    # The compiler's errors come before CMake's settings.
    grep -m 20 -A 3 -iE '(^|[ :])error[: ]' "$log" >&2
    echo "build_deb.sh: the build has failed; everything that it printed is in $log" >&2
    exit 1
fi
mv -f "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$output/"
ls "$output"/*.deb
