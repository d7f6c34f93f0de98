#!/bin/sh
# run-fuzzer.sh PROGRAM FOLDER NAME FINDINGS RUNS BYTES: replays FOLDER/corpus/NAME, then makes RUNS runs,
# or BEAMLINE_FUZZ_RUNS, of the fuzzer on it from a fixed seed with inputs of at most BYTES. New inputs go
# to a temporary folder, an input that fails to FINDINGS/NAME-*. Prints how many runs were made in each
# second of processor time.
set -eu
program=$1 folder=$2 name=$3 findings=$4 bytes=$6
runs=${BEAMLINE_FUZZ_RUNS:-$5}
corpus=$folder/corpus/$name
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$findings"

"$program" -runs=0 -artifact_prefix="$findings/$name-" "$corpus" >"$work/log" 2>&1 ||
    { cat "$work/log"; exit 1; }

# A small quarantine of freed memory and no check for the use of a stack frame after its return make the
# runs twice as fast. The replay above and all other tests check both fully. A replay of a finding prints
# the stacks that are cut short here.
ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}quarantine_size_mb=16:detect_stack_use_after_return=0:malloc_context_size=2
export ASAN_OPTIONS
set -- -runs="$runs" -seed=1 -max_len="$bytes" -timeout=5 -rss_limit_mb=1024 -artifact_prefix="$findings/$name-"
[ ! -f "$folder/dictionaries/$name.dict" ] || set -- "$@" -dict="$folder/dictionaries/$name.dict"
mkdir "$work/new"
times >"$work/before"
"$program" "$@" "$work/new" "$corpus" >"$work/log" 2>&1 || { tail -n 60 "$work/log"; exit 1; }
times >"$work/after"
grep 'DONE' "$work/log"
done_runs=$(sed -n 's/^#\([0-9]*\).*DONE.*/\1/p' "$work/log")
[ "$done_runs" -ge "$runs" ] || { echo "$name: only $done_runs of $runs runs were made"; exit 1; }
# The second line of each: user and system time of the programs that ran, as 1m2.34s.
awk -v runs="$runs" -v name="$name" -F '[ms ]+' 'FNR == 2 { used = $1 * 60 + $2 + $3 * 60 + $4 - used }
    END { printf "%s: %d runs in %.1f s of processor time, %d a second\n", name, runs, used, runs / (used + 0.01) }' \
    "$work/before" "$work/after"
