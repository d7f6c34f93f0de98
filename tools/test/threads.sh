#!/bin/sh
# usage: threads [--short] [--schedules N] [--rounds N]   random schedules of the threads, and the stress tests a thousand times under the thread sanitizer
#
# Random schedules find faults that need more preemptions than the complete search of ./test tries. The
# sanitizer watches threads that really run at the same time.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
schedules=100000 rounds=1000
while [ $# -gt 0 ]; do
    case $1 in
    --short) schedules=2000 rounds=20 ;;
    --schedules | --rounds)
        case ${2:-} in
        '' | *[!0-9]*) echo "threads.sh: $1 needs a number" >&2; exit 2 ;;
        esac
        [ "$1" = --rounds ] && rounds=$2 || schedules=$2
        shift ;;
    *) echo "threads.sh: there is no $1" >&2; exit 2 ;;
    esac
    shift
done
sh tools/install-packages.sh test || { echo "0 passed, 1 failed"; exit 1; }
log=$(mktemp)
trap 'rm -f "$log"' EXIT
export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1

passed=0 failed=0
# check NAME COMMAND...: counts the result and shows the output of a command that fails.
check() {
    name=$1
    shift
    began=$(date +%s)
    if "$@" >"$log" 2>&1 </dev/null; then
        passed=$((passed + 1))
        verdict=ok
    else
        failed=$((failed + 1))
        verdict='not ok'
        tail -n 200 "$log"
    fi
    echo "$verdict $name ($(($(date +%s) - began)) s)"
}
stress() {
    build/host-tsan/tests/tern_thread_tests --gtest_repeat="$rounds" --gtest_shuffle --gtest_brief=1 || return 1
    [ "$(grep -c '^\[  PASSED  \]' "$log")" -eq "$rounds" ]
}
# If the compiler flag of the sanitizer were lost, nothing would be found and every test would pass.
finds_planted_fault() {
    ! build/host-tsan/tests/sanitizer_faults thread && grep -q 'ThreadSanitizer: data race' "$log"
}

check "the schedules are built" sh tools/build-quietly.sh host schedule_tests
check "$schedules random schedules of each scene" \
    build/host/tests/schedule_tests --random="$schedules" --seed=1 --gtest_brief=1 \
    --gtest_filter=-SchedulePlantedFault*  # their planted faults must be found, not avoided
check "the thread sanitizer's build" sh tools/build-quietly.sh host-tsan tern_thread_tests sanitizer_faults
check "the thread sanitizer finds the planted fault" finds_planted_fault
check "$rounds shuffled rounds of the stress tests" stress
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
