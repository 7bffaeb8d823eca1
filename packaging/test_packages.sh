#!/bin/bash
# Tests the packages as a whole: the build, their contents, and a Debian 12 machine that has them.
# Usage: test_packages.sh [PACKAGES [EARLIER]]     as root. The last line counts the checks; the exit code is 1 if one
#        has failed. With the folder of packages, and of earlier ones, these are tested and nothing is built.
#
#   1. The packages are built twice in different folders and are equal to the byte. lintian finds no errors and warnings.
#   2. A fresh system gets the packages. A user sets the music folder and picks a track, which is heard on a null sink.
#   3. The system gets the packages of the commit before and is booted with the kiosk on. It is upgraded while the jukebox
#      runs; then the jukebox and its X server are ended, the jukebox is stopped by a signal, and its music is removed.
#      Credits outlive a restart of the service and end with a shutdown.
#   4. The packages are removed and purged. Whatever they leave on the disk has to be on a list.
#
# The systems are folders below build/package-test, run by systemd-nspawn. The base system and the packages of the commit
# before are kept there for the next run.
# shellcheck disable=SC2317 # functions are called by name
set -uo pipefail
here=$(cd -- "$(dirname -- "$0")" && pwd)
root=$(dirname -- "$here")
# shellcheck source=packaging/test_machine.sh
. "$here/test_machine.sh"
given=${1:+$(realpath -- "$1")}
given_earlier=${2:+$(realpath -- "$2")}
cd -- "$root" || exit 1

if [ $# -gt 2 ] || [[ ${1:-} == -* ]]; then
    sed -n '2,4p' "$0" >&2
    exit 2
fi
if [ "$(id -u)" -ne 0 ]; then
    echo "test_packages.sh: only root can make systems and boot them" >&2
    exit 2
fi
tools/install_packages.sh build package package-test || exit 1

work=$root/build/package-test
machine=$work/machine
mkdir -p "$work"
names="vantorix-jukebox-kiosk vantorix-jukebox-demo vantorix-jukebox"
passed=0
failed=0

# check WORDS COMMAND...: counts the command as a check.
check() {
    local words=$1
    shift
    if "$@" >"$work/check.log" 2>&1; then
        passed=$((passed + 1))
        echo "passed: $words"
        sed -n "s,^measured: ,        ,p" "$work/check.log"
    else
        failed=$((failed + 1))
        echo "FAILED: $words"
        tail -n 20 "$work/check.log"
        return 1
    fi
}

finish() {
    end_machine
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
    exit
}
trap finish INT TERM

build() {
    rm -rf "$2"
    if ! "$1/packaging/build_deb.sh" "$2" >"$work/build.log" 2>&1; then
        tail -n 30 "$work/build.log"
        check "building the packages of $1" false
        finish
    fi
}

same_packages() {
    local package
    for package in "$work"/first/*.deb; do
        cmp "$package" "$work/second/${package##*/}" || return 1
    done
    echo "$(find "$work/first" -name '*.deb' | wc -l) packages"
}

no_complaints() {
    lintian --no-cfg --allow-root --tag-display-limit 0 --fail-on error,warning "$packages"/*.changes
}

# The packages of the commit before, with a lower version. Before there were packages: those of today.
build_earlier() {
    local commit tree
    commit=$(git rev-parse HEAD~1)
    git cat-file -e "$commit:packaging/build_deb.sh" 2>/dev/null || commit=$(git rev-parse HEAD)
    earlier=$work/earlier-$commit
    if [ -f "$earlier/done" ]; then
        return
    fi
    rm -rf "$work"/earlier-*
    # Outside the clone: up to now build_deb.sh took an archive inside it for a part of the clone.
    tree=$(mktemp -d)
    git archive "$commit" | tar -x -C "$tree"
    sed -i '1s/(\(.*\))/(\1~earlier)/' "$tree/packaging/debian/changelog"
    build "$tree" "$earlier"
    touch "$earlier/done"
    rm -rf "$tree"
}

# Those of packages are links; the package's dependencies have to bring what they lead to.
themes_have_their_fonts() {
    local theme font titles tests=
    while read -r theme font titles; do
        titles=${titles:-$font}
        tests+="test -s /usr/share/vantorix/themes/$theme/${titles##*/} || { echo 'no ${titles##*/} in $theme'; exit 1; }; "
    done < <(grep '^[a-z]' tools/theme_fonts.txt)
    in_root "$tests"
}

if [ -n "$given" ]; then
    packages=$given
    earlier=${given_earlier:-$given}
    echo "Not built, so not compared: $packages"
else
    build "$root" "$work/first"
    build "$root" "$work/second"
    check "two builds are equal to the byte" same_packages
    build_earlier
    packages=$work/first
fi
check "lintian has no errors and warnings" no_complaints

if ! make_machine "$machine"; then
    check "a system is made" false
    finish
fi
mkdir -p "$machine/packages" "$machine/earlier"
cp "$packages"/*.deb "$machine/packages/"
cp "$earlier"/*.deb "$machine/earlier/"
cp "$root/tests/desktop/pulse.sh" "$here"/machine/* "$machine/test/"

check "the dependencies can be installed" install_dependencies || finish
list_files >"$work/files-before"
check "the packages install" in_root "dpkg -i /packages/*.deb"
check "the themes have their fonts" themes_have_their_fonts
check "a picked track is heard" in_root "/test/as_patron.sh"
check "the packages are removed" in_root "dpkg --remove $names"
check "the packages of the commit before install" in_root "dpkg -i /earlier/*.deb"

check "the machine boots" boot_machine || finish
for subject in starts upgrade killed screen hung disk credits; do
    check "the kiosk: $subject" in_machine "/test/kiosk.sh $subject"
done
end_machine
no_session_left() {
    [ -f "$machine/var/lib/vantorix/vantorix.log" ] && [ ! -e "$machine/var/lib/vantorix/session.json" ]
}
check "a shutdown ends the evening" no_session_left
check "the machine boots again" boot_machine || finish
for subject in off removed; do
    check "the kiosk: $subject" in_machine "/test/kiosk.sh $subject"
done
check "purging" in_machine "dpkg --purge $names"
end_machine

# What may be left: the owner's folder, the user, the records of the package manager and of the system itself.
left_over() {
    list_files | comm -13 "$work/files-before" - | grep -vE -f "$here/machine/left.txt" >"$work/left"
    cat "$work/left"
    [ ! -s "$work/left" ]
}
settings_are_kept() {
    grep -q '^StartPath=/usr/share/vantorix-demo' "$machine/var/lib/vantorix/config.ini"
}
check "nothing is left but what the list allows" left_over
check "the kiosk's settings have survived the purge" settings_are_kept
finish
