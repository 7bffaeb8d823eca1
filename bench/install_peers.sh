#!/bin/sh
# Installs the libraries that vantorix-bench measures ours against. The bench builds without them and leaves out the rows
# of those that pkg-config does not find.
set -eu
apt-get install -y --no-install-recommends libinih-dev libsimpleini-dev libicu-dev libpng-dev libspng-dev libstb-dev libtag1-dev pkg-config
