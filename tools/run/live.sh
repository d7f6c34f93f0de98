#!/bin/sh
# usage: live              takes the steps of a story from the keyboard, one by one; "help" says more
set -eu
cd "$(dirname "$0")/../.."
sh tools/build-player.sh
if [ -n "${DISPLAY:-}" ] && timeout 5 xdpyinfo >/dev/null 2>&1; then
    export BEAMLINE_KEEP_DISPLAY=1
else
    echo "There is no display here, so the alerts cannot be seen; the timeline tells of them."
fi
export LC_ALL=en_US.UTF-8
sh tools/wine/with-wine.sh build/wine-template wine build/windows/bin/printpath.exe "$@" live
