#!/bin/sh
# measure.sh [--check] [RUNS]: start-up, memory and size of the monitor, compared in one run under Wine
# with an empty program that has one dialog of the same size. With --check it fails when size, memory
# or start is above its limit. It needs the targets QVK7400SM, empty_program and startup_meter, in build/windows
# or in the folder that BEAMLINE_BUILD names.
set -eu
cd "$(dirname "$0")/../.."
check=
if [ "${1:-}" = --check ]; then
    check=$1
    shift
fi
set -- "${1:-15}"
[ -z "$check" ] || set -- "$@" "$check"
build=${BEAMLINE_BUILD:-build/windows}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
tools/wine/with-wine.sh "$PWD/build/wine-template" wine "$build/bench/startup_meter.exe" \
    "$build/bin/QVK7400SM.exe" "$build/bench/empty_program.exe" "$@" \
    >"$log" 2>&1 </dev/null || status=$?
tr -d '\r' <"$log"
# A crash under Wine can end with exit code 0, so the summary line must be there as well.
grep -q '^startup: ' "$log" || status=1
exit "$status"
