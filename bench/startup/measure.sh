#!/bin/sh
# measure.sh [--check] [RUNS]: start-up, memory and size of the monitor beside an empty program with one
# dialog of the same size, in one run under Wine. With --check it fails when size or memory pass their
# limits. Wants the targets QVK7400SM, empty_program and startup_meter, in build/windows or in the
# folder that BEAMLINE_BUILD names.
set -eu
cd "$(dirname "$0")/../.."
check=
if [ "${1:-}" = --check ]; then
    check=$1
    shift
fi
build=${BEAMLINE_BUILD:-build/windows}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
tools/wine/with-wine.sh "$PWD/build/wine-template" wine "$build/bench/startup_meter.exe" \
    "$build/bin/QVK7400SM.exe" "$build/bench/empty_program.exe" "${1:-15}" $check \
    >"$log" 2>&1 </dev/null || status=$?
tr -d '\r' <"$log"
# A crash under Wine can end with exit code 0; the line of figures comes last but for the checks.
grep -q '^startup: ' "$log" || status=1
exit "$status"
