#!/bin/sh
# usage: languages [LANGUAGE...]   every alert in every language, or in those named: nothing is cut off or overlaps
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh test || { echo "0 passed, 1 failed"; exit 1; }
sh tools/build-quietly.sh windows-checked alert_layout_tests || { echo "0 passed, 1 failed"; exit 1; }
exec sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tests/ui/windows/layout_of_languages.sh build/windows-checked/tests/alert_layout_tests.exe "$@"
