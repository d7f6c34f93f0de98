#!/bin/sh
# usage: winelib [REGEX]         the Windows sources under AddressSanitizer and UBSan, by way of Winelib
#
# REGEX: only tests of ctest whose names match. What does not run there stands, with the reason, in
# tests/winelib/left_out.txt.
set -u
cd "$(dirname "$0")/../.." || exit 1
log=$(mktemp)
trap 'rm -f "$log"' EXIT
tests=build/winelib/Testing/Temporary/LastTest.log

sh tools/install-packages.sh nightly && sh tools/build-quietly.sh winelib || { echo "0 passed, 1 failed"; exit 1; }
rm -f "$tests"
# What one program leaves of a processor, another can use: they wait for windows most of the time.
ctest --preset winelib -j "$(nproc)" ${1:+-R "$1"} --output-log "$log" \
    --test-output-size-passed 10000000 --test-output-size-failed 10000000 >/dev/null 2>&1 </dev/null || :
python3 tools/test/count_tests.py "$tests"
