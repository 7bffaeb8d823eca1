#!/bin/sh
# Xorg with a driver that has no graphics card, and without the virtual console, which a system in a folder does not have.
for argument; do
    shift
    [ "$argument" = vt1 ] || set -- "$@" "$argument"
done
exec /usr/lib/xorg/Xorg "$@" -config /test/xorg.conf -novtswitch -sharevts
