#!/bin/sh
# run-test.sh PROGRAM ARGS...: runs a Windows test program. It counts as passed only if it ends with
# exit code 0 and also prints that its tests passed, because a crash under Wine can end with code 0.
set -u
log=$(mktemp)
trap 'rm -f "$log"' EXIT
wine "$@" >"$log" 2>&1 </dev/null
status=$?
tr -d '\r' <"$log"
[ "$status" -eq 0 ] || { echo "run-test.sh: $1 ended with exit code $status"; exit "$status"; }
grep -q '\[  PASSED  \]' "$log" || { echo "run-test.sh: $1 never said that its tests passed"; exit 1; }
