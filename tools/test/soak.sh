#!/bin/sh
# usage: soak [--short] [--jobs N] [--records N]   10 000 jobs and 1 000 000 records: the monitor must not use more and more memory or handles
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

log=$(mktemp)
trap 'rm -f "$log"' EXIT
{ sh tools/install-packages.sh run && sh tools/build-quietly.sh windows printpath_programs; } ||
    { echo "0 passed, 1 failed"; exit 1; }
sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tests/soak/play.sh "$root/build/windows/bin" "$jobs" "$records" </dev/null | tee "$log"
passed=$(grep -c '^ok ' "$log") failed=$(grep -c '^not ok ' "$log")
[ $((passed + failed)) -eq 2 ] || failed=$((failed + 1))
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
