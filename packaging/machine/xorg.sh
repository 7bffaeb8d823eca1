#!/bin/sh
# Xvfb with the arguments of Xorg, without the virtual console, which a system in a folder does not have.
for argument; do
    shift
    [ "$argument" = vt1 ] || set -- "$@" "$argument"
done
exec Xvfb "$@" -screen 0 1280x720x24
