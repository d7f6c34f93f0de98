#!/bin/sh
# run-fuzzer.sh PROGRAM FOLDER NAME FINDINGS RUNS: replays FOLDER/corpus/NAME, then makes RUNS runs, or
# BEAMLINE_FUZZ_RUNS, of the fuzzer on it from a fixed seed. New inputs go to a temporary folder, an input
# that fails to FINDINGS/NAME-*.
set -eu
program=$1 folder=$2 name=$3 findings=$4
runs=${BEAMLINE_FUZZ_RUNS:-$5}
corpus=$folder/corpus/$name
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$findings"

"$program" -runs=0 -artifact_prefix="$findings/$name-" "$corpus" >"$work/log" 2>&1 ||
    { cat "$work/log"; exit 1; }
set -- -runs="$runs" -seed=1 -max_len=4096 -timeout=5 -rss_limit_mb=1024 -artifact_prefix="$findings/$name-"
[ ! -f "$folder/dictionaries/$name.dict" ] || set -- "$@" -dict="$folder/dictionaries/$name.dict"
mkdir "$work/new"
"$program" "$@" "$work/new" "$corpus" >"$work/log" 2>&1 || { tail -n 60 "$work/log"; exit 1; }
tail -n 3 "$work/log"
