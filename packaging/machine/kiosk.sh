#!/bin/sh
# One test of the kiosk on a booted system: kiosk.sh SUBJECT
set -eu

main_pid() {
    systemctl show -P MainPID vantorix-kiosk.service
}

# wait_for SECONDS WORDS COMMAND...
wait_for() {
    limit=$1
    words=$2
    shift 2
    begin=$(date +%s)
    until "$@"; do
        if [ $(($(date +%s) - begin)) -ge "$limit" ]; then
            echo "not within $limit seconds: $words"
            systemctl --no-pager status 'vantorix-kiosk*' || true
            journalctl -b --no-pager -n 30 || true
            exit 1
        fi
        sleep 0.2
    done
    echo "measured: $words: $(($(date +%s) - begin)) s"
}

# The jukebox itself runs, and has reported that it is ready.
is_up() {
    [ "$(systemctl is-active vantorix-kiosk.service)" = active ] &&
        [ "$(readlink "/proc/$(main_pid)/exe" 2>/dev/null)" = /usr/bin/vantorix ]
}

is_up_again() {
    is_up && [ "$(main_pid)" != "$before" ]
}

names_the_folder() {
    journalctl -b -u vantorix-kiosk | grep -q "/srv/disk: there is no such folder"
}

is_gone() {
    [ "$(systemctl is-active vantorix-kiosk.service)" != active ] && [ "$(systemctl is-active vantorix-kiosk-screen.service)" != active ]
}

takes_a_coin() {
    DISPLAY=:0 XAUTHORITY=/run/vantorix-screen/Xauthority xdotool key Insert
    sleep 1
    grep -qs '"credits": [1-9]' /var/lib/vantorix/session.json
}

case $1 in
starts)
    vantorix-kiosk setup /usr/share/vantorix-demo
    vantorix-kiosk on
    wait_for 60 "the jukebox reports that it is ready" is_up
    [ "$(stat -c %U "/proc/$(main_pid)")" = vantorix ]
    # The screen never goes dark.
    DISPLAY=:0 XAUTHORITY=/run/vantorix-screen/Xauthority xset q >/tmp/xset
    grep "timeout:  0 " /tmp/xset
    if grep "DPMS is Enabled" /tmp/xset; then
        exit 1
    fi
    # The journal has the lines of the log.
    wait_for 10 "a line of the log in the journal" sh -c "journalctl -b -u vantorix-kiosk | grep -q RedrawJukebox"
    ;;
upgrade)
    before=$(main_pid)
    sed -i 's/^ShowTrackNum=.*/ShowTrackNum=false/' /var/lib/vantorix/config.ini
    dpkg -i /packages/*.deb
    wait_for 60 "the new version after the upgrade" is_up_again
    grep '^ShowTrackNum=false' /var/lib/vantorix/config.ini
    ;;
killed)
    before=$(main_pid)
    kill -KILL "$before"
    wait_for 30 "the jukebox after SIGKILL" is_up_again
    ;;
screen)
    before=$(main_pid)
    kill -KILL "$(systemctl show -P MainPID vantorix-kiosk-screen.service)"
    wait_for 60 "the jukebox after the end of the X server" is_up_again
    ;;
hung)
    before=$(main_pid)
    kill -STOP "$before"
    wait_for 120 "the jukebox after SIGSTOP" is_up_again
    journalctl -b -u vantorix-kiosk | grep "Watchdog timeout"
    ;;
disk)
    # The music is gone: the jukebox still starts and shows that. When the music is back, it plays again.
    mkdir -p /srv/disk/Band
    cp "/usr/share/vantorix-demo/Amazing_Grace.mp3" /srv/disk/Band/
    vantorix-kiosk setup /srv/disk
    vantorix-kiosk off
    mv /srv/disk /srv/unplugged
    vantorix-kiosk on
    wait_for 60 "the jukebox without its music" names_the_folder
    mv /srv/unplugged /srv/disk
    wait_for 300 "the jukebox after the music is back" is_up
    rm -r /srv/disk
    vantorix-kiosk setup /usr/share/vantorix-demo
    wait_for 60 "the jukebox with the music of before" is_up
    ;;
credits)
    # A coin outlives a restart of the service.
    sed -i 's/^ManageCoin=.*/ManageCoin=true/' /var/lib/vantorix/config.ini
    before=$(main_pid)
    systemctl restart vantorix-kiosk
    wait_for 60 "the jukebox that counts credits" is_up_again
    wait_for 30 "a coin on the disk" takes_a_coin
    before=$(main_pid)
    systemctl restart vantorix-kiosk
    wait_for 60 "the jukebox after a restart" is_up_again
    wait_for 30 "the credits of before" grep -qa "Reprise : crédits [1-9]" /var/lib/vantorix/vantorix.log
    ;;
off)
    vantorix-kiosk off
    is_gone
    [ "$(systemctl is-enabled vantorix-kiosk.service)" = disabled ]
    ;;
removed)
    vantorix-kiosk on
    wait_for 60 "the jukebox before its removal" is_up
    dpkg --remove vantorix-jukebox-kiosk vantorix-jukebox-demo vantorix-jukebox
    is_gone
    if pgrep -u vantorix; then
        exit 1
    fi
    ;;
esac
