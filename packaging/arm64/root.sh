#!/bin/bash
# Runs a command in a Debian 12 root of its own, where the packages for arm64 do not replace those of the machine. The
# first call makes the root.
# Usage: root.sh COMMAND [ARGUMENT...]
# The root is build/arm64-root, or the folder in VANTORIX_ARM64_ROOT. The repository is /src inside, and the command
# starts there. Needs an amd64 machine with debootstrap and the rights of root, or sudo. Packages come from where
# the machine's own apt gets them.
set -euo pipefail
cd -- "$(dirname -- "$0")/../.."
repository=$PWD
root=$(realpath -m -- "${VANTORIX_ARM64_ROOT:-build/arm64-root}")
release=bookworm

if [ $# -eq 0 ]; then
    echo "Usage: root.sh COMMAND [ARGUMENT...]" >&2
    exit 2
fi
if [ "$(id -u)" -ne 0 ]; then
    exec sudo -- env VANTORIX_ARM64_ROOT="$root" "$0" "$@"
fi

fail() {
    echo "root.sh: $1" >&2
    exit 1
}

# One line of a sources.list for each source of Debian packages for this release on the machine.
sources() {
    apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v release="$release" '$2 ~ "^" release "(-updates|-security)?$" && $3 == "main" { print "deb", $0 }' | sort -u
}

make_root() {
    local part=$root.part mirror
    [ "$(dpkg --print-architecture)" = amd64 ] || fail "packages are cross-built on amd64 only"
    command -v debootstrap >/dev/null || fail "debootstrap is missing"
    mirror=$(sources | awk -v release="$release" '$3 == release { print $2; exit }')
    [ -n "$mirror" ] || fail "apt knows no source of packages of Debian $release"
    rm -rf --one-file-system -- "$part"
    mkdir -p -- "$(dirname -- "$root")"
    tools/progress.sh "Making $root" "$root.log" debootstrap --variant=minbase "$release" "$part" "$mirror" ||
        fail "debootstrap has failed; see $root.log"
    sources >"$part/etc/apt/sources.list"
    # The machine's way to the sources, such as a proxy.
    apt-config dump | grep -E '^Acquire::(http|https|Retries|Check-)' >"$part/etc/apt/apt.conf.d/20machine" || true
    chroot "$part" dpkg --add-architecture arm64
    root=$part inside bash -c 'apt-get update && apt-get install -y --no-install-recommends crossbuild-essential-arm64' \
        >>"$root.log" 2>&1 || fail "installing the compiler has failed; see $root.log"
    mv -- "$part" "$root"
}

# The mounts end with the command.
inside() {
    mkdir -p -- "$root/src"
    cp -L /etc/resolv.conf "$root/etc/resolv.conf"
    unshare --mount -- bash -c '
        set -e
        root=$1 repository=$2
        shift 2
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        mount --bind "$repository" "$root/src"
        exec chroot "$root" env -i -C /src PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"
    ' _ "$root" "$repository" "$@"
}

[ -d "$root" ] || make_root
inside "$@"
