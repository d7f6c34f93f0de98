#!/bin/sh
# build-quietly.sh PRESET [TARGET...]: configures and builds a preset; prints the log only when
# something is wrong.
set -eu
preset=$1
shift
log=$(mktemp)
trap 'rm -f "$log"' EXIT
{ cmake --preset "$preset" && cmake --build --preset "$preset" ${1:+--target "$@"}; } \
    >"$log" 2>&1 </dev/null || {
    grep -v '^\[[0-9/]*\] ' "$log" | tail -n 200
    echo "The build of preset $preset failed."
    exit 1
}
