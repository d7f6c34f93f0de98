#!/bin/sh
# usage: memory [PROGRAM...]   native tests under Valgrind: uninitialised bytes, leaks, invalid reads
#
# Bytes that leave through registry, printer data and pipes are checked for values where they leave,
# see platform/simulated/memory_check.h. Left out: programs that bring an allocator or threads of
# their own, where Valgrind would watch those instead.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root"
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }
programs=$*
if [ -z "$programs" ]; then
    sh tools/build-quietly.sh host || { echo "0 passed, 1 failed"; exit 1; }
    programs=$(find build/host/tests -maxdepth 1 -name '*_tests' -type f ! -name 'schedule_tests' | sort)
fi
passed=0 failed=0
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for program in $programs; do
    if valgrind -q --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,possible \
        --track-origins=yes --fair-sched=yes --suppressions=tools/test/valgrind.supp \
        "$program" --gtest_brief=1 --gtest_filter='-*DeathTest*:*Stress*' >"$log" 2>&1 </dev/null; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "== $program"
        cat "$log"
    fi
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
