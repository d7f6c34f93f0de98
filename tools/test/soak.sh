#!/bin/sh
# usage: soak [--short] [--jobs N] [--records N]   the shipped monitor: 10 000 jobs and 1 000 000 records, gauges flat
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
jobs=10000 records=1000000
while [ $# -gt 0 ]; do
    case $1 in
    --short) jobs=20 records=2000 ;;
    --jobs | --records)
        case ${2:-} in
        '' | *[!0-9]*) echo "soak.sh: $1 needs a number" >&2; exit 2 ;;
        esac
        [ "$1" = --jobs ] && jobs=$2 || records=$2
        shift ;;
    *) echo "soak.sh: there is no $1" >&2; exit 2 ;;
    esac
    shift
done
watched=
[ ! -t 2 ] || watched=--watched

log=$(mktemp)
trap 'rm -f "$log"' EXIT
{ sh tools/install-packages.sh run &&
    sh tools/build-quietly.sh windows bin/QVK7400SM.exe bin/QVK7400SMs.dll simulated_device \
        simulated_device_pages soak; } || { echo "0 passed, 1 failed"; exit 1; }
# Believed by its last line only: a crash under Wine can end with exit code 0.
# shellcheck disable=SC2086
sh tools/wine/with-wine.sh "$root/build/wine-template" wine build/windows/tests/soak.exe $watched \
    --jobs "$jobs" --records "$records" "Z:$root/build/windows/bin" </dev/null | tee "$log"
case $(tail -n 1 "$log") in
*' passed, 0 failed') ;;
*' passed, '*' failed') exit 1 ;;
*) echo "0 passed, 1 failed"; exit 1 ;;
esac
