#!/bin/sh
# build-player.sh: installs missing packages, builds the monitor and the programs that play scenarios, and
# makes the Wine prefix that each run copies. On a terminal it shows its progress.
set -eu
cd "$(dirname "$0")/.."
sh tools/install-packages.sh run
echo "Building ..."
sh tools/build-quietly.sh windows printpath_programs
echo "Starting Wine ..."
log=$(mktemp)
trap 'rm -f "$log"' EXIT
python3 tools/progress.py "making a Wine prefix" "$log" sh tools/wine/make-prefix.sh build/wine-template || {
    cat "$log"
    echo "The Wine prefix could not be made."
    exit 1
}
