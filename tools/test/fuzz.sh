#!/bin/sh
# usage: fuzz [--minutes N] [TARGET...]   every fuzz target for N minutes, 30 unless told otherwise
#
# Two fuzzers take turns, twice each, and start from what the other has found. Then the corpus gets the
# inputs that reach code which none of its own reaches. A finding fails the target; it is kept in
# build/fuzz-findings, and the command that replays it is printed.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
minutes=30
if [ "${1:-}" = --minutes ]; then
    minutes=$2
    shift 2
fi
fuzzers=build/host-asan/tests findings=build/fuzz-findings log=build/fuzz.log
input_limit=4096 # bytes of an input that may join a corpus
targets=$*
[ -n "$targets" ] || targets=$(ls tests/fuzz/corpus)
programs=
for target in $targets; do programs="$programs fuzz_$target"; done

sh tools/install-packages.sh nightly
export AFL_QUIET=1
# shellcheck disable=SC2086
sh tools/build-quietly.sh host-asan $programs replay_corpora && sh tools/build-quietly.sh host-afl $programs ||
    { echo "0 passed, 1 failed"; exit 1; }
mkdir -p "$findings"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
turn=$((minutes * 60 / 4)) # seconds

# The limits of ./test's short runs, read from where they are set.
bytes_of() {
    limit=$(sed -n "s/^add_fuzz_target($1 BYTES \([0-9]*\) .*/\1/p" tests/fuzz/CMakeLists.txt)
    echo "${limit:-$input_limit}"
}

# take_turn_1 TARGET FOLDER: the compiler's fuzzer, new inputs to FOLDER/shared.
take_turn_1() {
    set -- "$1" "$2" -max_total_time="$turn" -max_len="$(bytes_of "$1")" -timeout=10 -rss_limit_mb=1024 \
        -print_final_stats=1 -artifact_prefix="$findings/$1-"
    target=$1 folder=$2
    shift 2
    dictionary=tests/fuzz/dictionaries/$target.dict
    [ ! -f "$dictionary" ] || set -- "$@" -dict="$dictionary"
    ASAN_OPTIONS=quarantine_size_mb=16:max_uar_stack_size_log=16:detect_stack_use_after_return=1 \
        "$fuzzers/fuzz_$target" "$@" "$folder/shared" "tests/fuzz/corpus/$target" >"$log" 2>&1 </dev/null ||
        tail -n 40 "$log"
    sed -n 's/^stat::number_of_executed_units: *//p' "$log" >>"$folder/runs"
}

# take_turn_2 TARGET FOLDER: the other fuzzer, which keeps its queue in a folder of its own.
take_turn_2() {
    rm -rf "$2/seeds" "$2/queue"
    mkdir "$2/seeds"
    cp "tests/fuzz/corpus/$1"/* "$2/seeds"
    find "$2/shared" -type f -exec cp -t "$2/seeds" {} +
    find "$2/seeds" -size 0 -delete # which it would refuse
    dictionary=tests/fuzz/dictionaries/$1.dict
    # shellcheck disable=SC2046
    env -u ASAN_OPTIONS -u UBSAN_OPTIONS AFL_SKIP_CPUFREQ=1 AFL_I_DONT_CARE_ABOUT_MISSING_CRASHES=1 AFL_NO_UI=1 \
        AFL_NO_AFFINITY=1 AFL_IGNORE_PROBLEMS=1 \
        afl-fuzz -V "$turn" -t 5000 -m none -G "$(bytes_of "$1")" -i "$2/seeds" -o "$2/queue" \
        $([ ! -f "$dictionary" ] || echo "-x $dictionary") -- "build/host-afl/tests/fuzz_$1" \
        >"$log" 2>&1 </dev/null || tail -n 40 "$log"
    sed -n 's/^execs_done *: *//p' "$2/queue/default/fuzzer_stats" >>"$2/runs"
    # Names with a colon would not do everywhere.
    for found in "$2"/queue/default/queue/id*; do
        [ ! -f "$found" ] || cp "$found" "$2/shared/$(sha1sum <"$found" | cut -c1-40)"
    done
    for found in "$2"/queue/default/crashes/id* "$2"/queue/default/hangs/id*; do
        [ ! -f "$found" ] || cp "$found" "$findings/$1-$(sha1sum <"$found" | cut -c1-40)"
    done
}

merge() {
    before=$(find "tests/fuzz/corpus/$1" -type f | wc -l)
    # Lines count, not how often each ran: a corpus is read by people, too.
    "$fuzzers/fuzz_$1" -merge=1 -use_counters=0 -max_len="$input_limit" "tests/fuzz/corpus/$1" "$2/shared" \
        >"$log" 2>&1 </dev/null || tail -n 40 "$log"
    after=$(find "tests/fuzz/corpus/$1" -type f | wc -l)
    echo "$1: $(awk '{ runs += $1 } END { printf "%.1f million runs", runs / 1e6 }' "$2/runs")," \
        "$((after - before)) inputs joined the corpus of $before"
}

passed=0 failed=0
for target in $targets; do
    folder=$work/$target
    mkdir -p "$folder/shared"
    touch "$work/began"
    for _ in 1 2; do
        take_turn_1 "$target" "$folder"
        take_turn_2 "$target" "$folder"
    done
    new=$(find "$findings" -name "$target-*" -newer "$work/began")
    if [ -n "$new" ]; then
        failed=$((failed + 1))
        for finding in $new; do
            echo "$target: finding $finding; replay: $fuzzers/fuzz_$target $finding"
        done
    else
        passed=$((passed + 1))
        merge "$target" "$folder"
    fi
    rm -rf "$folder"
done
[ "$failed" -ne 0 ] || "$fuzzers/replay_corpora" --write
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
