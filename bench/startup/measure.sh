#!/bin/sh
# measure.sh [RUNS]: start-up, memory and size of the monitor beside an empty program with one dialog
# of the same size, in one run under Wine. Wants the targets QVK7400SM, empty_program, startup_meter.
set -eu
cd "$(dirname "$0")/../.."
bin=build/windows/bin
exec tools/wine/with-wine.sh "$PWD/build/wine-template" \
    wine build/windows/bench/startup_meter.exe "$bin/QVK7400SM.exe" \
    build/windows/bench/empty_program.exe "${1:-15}"
