#!/bin/sh
# usage: fuzz [--minutes N] [TARGET...]   runs each fuzz target for N minutes; default: 30, all targets
#
# An input that reaches new code is added to the target's corpus. A target fails if its fuzzer finds a fault,
# is missing, ends with an error or makes no run. The input that shows the fault is kept in
# build/fuzz-findings, and the command that replays it is printed.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
minutes=30
if [ "${1:-}" = --minutes ]; then
    minutes=${2:-}
    case $minutes in
    '' | *[!0-9]* | 0*) echo "fuzz.sh: --minutes needs a number of at least 1" >&2; exit 2 ;;
    esac
    shift 2
fi
fuzzers=build/host-asan/tests findings=build/fuzz-findings log=build/fuzz.log
input_limit=4096 # no longer input (in bytes) is added to a corpus
targets=$*
[ -n "$targets" ] || targets=$(ls tests/fuzz/corpus)
programs=
for target in $targets; do
    [ -d "tests/fuzz/corpus/$target" ] || { echo "fuzz.sh: there is no target $target" >&2; exit 2; }
    programs="$programs fuzz_$target"
done

# shellcheck disable=SC2086
if ! sh tools/install-packages.sh test || ! sh tools/build-quietly.sh host-asan $programs; then
    echo "0 passed, 1 failed"
    exit 1
fi
mkdir -p "$findings"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM

# The longest input of a target: the same limit as in the short runs of ./test, read from where it is set.
bytes_of() {
    limit=$(sed -n "s/^add_fuzz_target($1 BYTES \([0-9]*\) .*/\1/p" tests/fuzz/CMakeLists.txt)
    echo "${limit:-$input_limit}"
}

# fuzz TARGET: writes new inputs to $work/TARGET, sets $runs to the number of runs and returns the exit code
# of the fuzzer.
fuzz() {
    dictionary=tests/fuzz/dictionaries/$1.dict
    dictionary_option=
    [ ! -f "$dictionary" ] || dictionary_option=-dict=$dictionary
    rm -f "$log"
    # shellcheck disable=SC2086
    ASAN_OPTIONS=quarantine_size_mb=16:max_uar_stack_size_log=16:detect_stack_use_after_return=1 \
        python3 tools/progress.py "fuzzing $1 for $minutes min" "$log" "$fuzzers/fuzz_$1" \
        -max_total_time="$((minutes * 60))" -max_len="$(bytes_of "$1")" -timeout=10 -rss_limit_mb=1024 \
        -print_final_stats=1 -artifact_prefix="$findings/$1-" $dictionary_option \
        "$work/$1" "tests/fuzz/corpus/$1"
    ended=$?
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    return "$ended"
}

# merge TARGET: adds the inputs that reach new lines. How often a line runs does not matter, because
# people read the corpus and it must stay small.
merge() {
    before=$(find "tests/fuzz/corpus/$1" -type f | wc -l)
    "$fuzzers/fuzz_$1" -merge=1 -use_counters=0 -max_len="$input_limit" "tests/fuzz/corpus/$1" "$work/$1" \
        >"$log" 2>&1 </dev/null || return 1
    joined=$(($(find "tests/fuzz/corpus/$1" -type f | wc -l) - before))
    echo "$1: $runs runs, $joined inputs joined the corpus of $before"
    all_joined=$((all_joined + joined))
}

passed=0 failed=0 all_joined=0
for target in $targets; do
    mkdir "$work/$target"
    touch "$work/began"
    if fuzz "$target" && [ "${runs:-0}" -gt 0 ] && merge "$target"; then
        passed=$((passed + 1))
        continue
    fi
    failed=$((failed + 1))
    tail -n 40 "$log"
    echo "$target: FAILED with exit code $ended after ${runs:-0} runs"
    find "$findings" -name "$target-*" -newer "$work/began" | while read -r finding; do
        echo "$target: finding $finding; replay: $fuzzers/fuzz_$target $finding"
    done
done
# The expected results of new inputs are not written here, because a person must judge them first.
[ "$all_joined" -eq 0 ] ||
    echo "Look at the new inputs and at what $fuzzers/replay_corpora --write adds to tests/fuzz/expected."
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
