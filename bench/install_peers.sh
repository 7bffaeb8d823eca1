#!/bin/sh
# Installs the libraries, the player and the prober (ffprobe) that vantorix-bench compares ours with. It builds without them and leaves out those
# that pkg-config does not find.
set -eu
apt-get install -y --no-install-recommends ffmpeg libfftw3-dev libinih-dev libsimpleini-dev libicu-dev libpng-dev libspng-dev libstb-dev libtag1-dev mpv pkg-config
