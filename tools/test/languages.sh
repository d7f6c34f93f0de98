#!/bin/sh
# usage: languages [LANGUAGE...]   every alert in every language, or those named, at 100 and 200 %: nothing is cut off
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh test || { echo "0 passed, 1 failed"; exit 1; }
sh tools/build-quietly.sh windows-checked alert_layout_tests accessible_control_tests || { echo "0 passed, 1 failed"; exit 1; }
tests=build/windows-checked/tests
programs="$tests/alert_layout_tests.exe $tests/accessible_control_tests.exe"
passed=0 failed=0
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for dpi in 96 192; do
    BEAMLINE_ALL_SCRIPTS=1 BEAMLINE_DPI=$dpi sh tools/wine/with-wine.sh "$root/build/wine-template" \
        sh tests/ui/windows/layout_of_languages.sh "$programs" "$@" >"$log" 2>&1
    sed "\$d; s/^== .*/& at $dpi dots per inch/" "$log"
    counts=$(tail -n 1 "$log")
    case $counts in
    *[0-9]' passed, '*[0-9]' failed')
        bad=${counts##*, }
        passed=$((passed + ${counts%% passed*}))
        failed=$((failed + ${bad% failed})) ;;
    *)
        echo "$counts"
        failed=$((failed + 1)) ;;
    esac
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
