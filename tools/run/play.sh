#!/bin/sh
# play.sh SCENARIO: builds what is needed, plays the scenario with the real monitor in its own Wine
# prefix, and leaves the pictures in out/.
set -eu
scenario=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
here=$(pwd)
case $scenario in /*) ;; *) scenario=$here/$scenario ;; esac
cd "$root"

sh tools/build-player.sh

# DISPLAY may name a display that does not exist any more.
if [ -n "${DISPLAY:-}" ] && timeout 5 xdpyinfo >/dev/null 2>&1; then
    export BEAMLINE_KEEP_DISPLAY=1
fi
mkdir -p out
pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT

status=0
sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tests/scenarios/play.sh "$root/build/windows/bin" "$scenario" --pictures "Z:$pictures" || status=$?

for picture in "$pictures"/*.bmp; do
    [ -f "$picture" ] || continue
    name=out/$(basename "$picture" .bmp).png
    convert "$picture" "$name"
    echo "Picture: $name"
done
[ "$status" -eq 0 ] || echo "./run: $(basename "$scenario") did not go as it should (exit code $status)"
exit "$status"
