#!/bin/sh
# usage: memory [PROGRAM...]   native tests under Valgrind: uninitialised bytes, leaks, invalid reads
#
# Bytes that are written to the registry or to a pipe are checked where they are written: all must have
# been initialised (see platform/simulated/memory_check.h). The program of the schedules is left out: it
# has threads and locks of its own, so Valgrind would not see those that the product uses.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }
programs=$*
sh tools/build-quietly.sh host ${programs:+sanitizer_faults} || { echo "0 passed, 1 failed"; exit 1; }
if [ -z "$programs" ]; then
    programs=$(find build/host/tests -maxdepth 1 -name '*_tests' -type f ! -name 'schedule_tests' | sort)
fi
passed=0 failed=0
log=$(mktemp)
trap 'rm -f "$log"' EXIT

# under_valgrind PROGRAM ARGUMENTS...: writes the output to $log and returns 99 if Valgrind finds a fault.
under_valgrind() {
    valgrind -q --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,possible \
        --track-origins=yes --fair-sched=yes --suppressions=tools/test/valgrind.supp "$@" >"$log" 2>&1 </dev/null
}

# not_ok NAME: counts a failure and shows the log of the program that failed.
not_ok() {
    failed=$((failed + 1))
    echo "== $1"
    cat "$log"
}

# Each run makes one planted fault, which Valgrind must find: see tests/planted_faults/planted_fault.cpp.
while read -r fault report; do
    under_valgrind build/host/tests/sanitizer_faults "$fault"
    if [ $? -eq 99 ] && grep -q "$report" "$log"; then
        passed=$((passed + 1))
    else
        not_ok "the fault $fault was not found"
    fi
done <<'PLANTED_FAULTS'
undefined_to_pipe Uninitialised byte(s) found
undefined_to_registry Uninitialised byte(s) found
leak definitely lost
PLANTED_FAULTS

for program in $programs; do
    if under_valgrind "$program" --gtest_brief=1 --gtest_filter='-*DeathTest*:*Stress*'; then
        passed=$((passed + 1))
    else
        not_ok "$program"
    fi
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
