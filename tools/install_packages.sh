#!/bin/bash
# Installs the missing packages of groups in packages.txt; prints nothing if none is missing.
# Usage: install_packages.sh GROUP...
set -euo pipefail
here=$(cd -- "$(dirname -- "$0")" && pwd)

wanted=$(for group in "$@"; do
    awk -v group="$group" '$1 == group { print $2 }' "$here/packages.txt"
done | sort -u)

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=()
for package in $wanted; do
    if ! is_installed "$package"; then
        missing+=("$package")
    fi
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

give_up() {
    echo "These packages are missing and cannot be installed automatically ($1):" >&2
    echo "  ${missing[*]}" >&2
    echo "On Debian 12, as root: apt-get install ${missing[*]}" >&2
    exit 1
}

if ! command -v apt-get >/dev/null; then
    give_up "there is no apt-get"
fi
become=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || give_up "this is not root, and there is no sudo"
    become=(sudo)
    # Without a terminal nobody can type a password; on a terminal sudo asks for it before the progress is shown.
    if [ -t 0 ]; then
        sudo -v || give_up "sudo failed"
    else
        become=(sudo -n)
    fi
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
run_apt() {
    local label=$1
    shift
    "$here/progress.sh" "$label" "$log" "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "$@"
}

install_missing() {
    run_apt "Installing packages" install -y --no-install-recommends "${missing[@]}"
}

echo "Installing ${#missing[@]} packages: ${missing[*]}"
# Missing or outdated package lists make the first attempt fail.
if ! install_missing; then
    if ! run_apt "Updating the package lists" update || ! install_missing; then
        tail -n 15 "$log" >&2
        give_up "apt-get failed"
    fi
fi
