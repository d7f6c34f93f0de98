#!/bin/sh
# build-quietly.sh PRESET [TARGET...]: configures and builds a preset. It prints the log only when
# something fails. On a terminal it shows its progress with progress.py.
set -eu
preset=$1
shift
progress=$(dirname "$0")/progress.py
log=$(mktemp)
trap 'rm -f "$log"' EXIT
configure() { python3 "$progress" "configuring $preset" "$log" cmake --preset "$preset"; }
# The second time is for a build folder whose compiler has changed: see CMakeLists.txt.
{ { configure || configure; } &&
    python3 "$progress" "building $preset" "$log" cmake --build --preset "$preset" ${1:+--target "$@"}; } || {
    grep -v '^\[[0-9/]*\] ' "$log" | tail -n 200
    echo "The build of preset $preset failed."
    exit 1
}
