# Makes a Debian 12 system in a folder, runs commands in it, and boots it. Read by test_packages.sh, which sets the
# variables "work", "machine" and "packages".
# shellcheck shell=bash disable=SC2154

# The mirror that this machine uses, so that none is written down here.
mirror() {
    # shellcheck disable=SC2016 # these are apt's own variables
    apt-get indextargets --format '$(REPO_URI) $(CODENAME)' 'Created-By: Packages' |
        awk '$2 == "bookworm" { print $1; exit }'
}

# A fresh system with what the tests use. The base is made once.
make_machine() {
    if [ ! -f "$work/base.done" ]; then
        rm -rf "$work/base"
        tools/progress.sh "Making a base system" "$work/base.log" \
            debootstrap --variant=minbase bookworm "$work/base" "$(mirror)" || return 1
        cp /etc/resolv.conf "$work/base/etc/resolv.conf"
        echo "Installing the tools of the tests"
        machine=$work/base in_root "apt-get update && apt-get install -y --no-install-recommends systemd-sysv dbus udev \
            procps xvfb xdotool xserver-xorg-video-dummy pulseaudio pulseaudio-utils gstreamer1.0-pulseaudio" >>"$work/base.log" || return 1
        touch "$work/base.done"
    fi
    rm -rf "$1"
    cp -a "$work/base" "$1"
    mkdir "$1/test"
}

nspawn=(systemd-nspawn --quiet --register=no --keep-unit --hostname=cabinet)

# Runs a command in the system, which is not booted.
in_root() {
    local code
    "${nspawn[@]}" --directory="$machine" --as-pid2 --setenv=DEBIAN_FRONTEND=noninteractive /bin/sh -c "$1" </dev/null 2>&1 |
        grep -v '^Attempted to remove disk'
    code=${PIPESTATUS[0]}
    return "$code"
}

# What the packages depend on, without the packages themselves.
install_dependencies() {
    local package fields
    fields=$(for package in "$packages"/*.deb; do
        dpkg-deb -f "$package" Depends
        echo
    done | tr ',' '\n' | sed 's/^ *//; /^vantorix-jukebox/d; /^$/d' | sort -u | paste -sd,)
    in_root "apt-get satisfy -y --no-install-recommends '$fields'"
}

list_files() {
    (cd -- "$machine" && find . -xdev -path ./test -prune -o -path ./packages -prune -o -path ./earlier -prune -o -print) |
        LC_ALL=C sort
}

# Boots the system in a network of its own and waits until it is up.
boot_machine() {
    local turn
    # Xorg gets a driver without a graphics card, and no virtual console.
    install -m 755 "$here/machine/xorg.sh" "$machine/usr/bin/Xorg"
    "${nspawn[@]}" --directory="$machine" --boot --private-network </dev/null >"$work/boot.log" 2>&1 &
    booted=$!
    for ((turn = 0; turn < 120; ++turn)); do
        sleep 0.5
        # The program that systemd-nspawn itself starts is the system's first process.
        first=$(pgrep -P "$booted" -x systemd) || continue
        in_machine "systemctl is-system-running --wait >/dev/null; test -S /run/dbus/system_bus_socket" && return
    done
    return 1
}

# Runs a command in the booted system, and never in the one of this script.
in_machine() {
    local own there
    own=$(readlink /proc/self/ns/pid)
    there=$(readlink "/proc/${first:-none}/ns/pid") || return 1
    [ "$there" != "$own" ] || return 1
    nsenter -t "$first" -m -u -i -n -p -C --root --wd env -i -C / PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        DEBIAN_FRONTEND=noninteractive /bin/sh -c "$1"
}

end_machine() {
    local turn
    [ -n "${booted:-}" ] || return
    in_machine "systemctl poweroff" >/dev/null 2>&1
    for ((turn = 0; turn < 60; ++turn)); do
        kill -0 "$booted" 2>/dev/null || break
        sleep 0.5
    done
    # A system that does not shut down ends with its first process.
    if kill -0 "$booted" 2>/dev/null; then
        pkill -KILL -P "$booted"
        kill -KILL "$booted"
    fi
    wait "$booted" 2>/dev/null
    booted=
    first=
}
