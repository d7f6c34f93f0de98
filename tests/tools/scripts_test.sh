#!/bin/sh
# scripts_test.sh ROOT: what ./run and ./test say without building anything. One line a check.
set -u
cd "$1" || exit 1
failed=0

# check NAME CODE PATTERN COMMAND...: the command ends with this code and prints this.
check() {
    name=$1 code=$2 pattern=$3
    shift 3
    printed=$("$@" 2>&1)
    got=$?
    if [ "$got" -eq "$code" ] && printf '%s\n' "$printed" | grep -q -e "$pattern"; then
        echo "ok $name"
    else
        echo "not ok $name (exit code $got)"
        printf '%s\n' "$printed"
        failed=1
    fi
}

every_story_is_listed() {
    for scenario in scenarios/*.txt; do
        ./run --list | grep -q "^$(basename "$scenario" .txt)  *[A-Z0-9]" || { echo "$scenario"; return 1; }
    done
    echo all
}

every_package_has_a_purpose() {
    ! grep -v -e '^#' -e '^$' tools/packages.txt | grep -v -E '^[a-z0-9.+-]+ +(run|test|nightly)$' && echo all
}

check "./run --help explains stories" 0 'SCENARIO' ./run --help
check "./run --list lists every story with its text" 0 '^all$' every_story_is_listed
check "./run refuses an unknown option" 2 'no option --sideways' ./run --sideways
check "./run refuses an unknown story" 2 'no story never-told' ./run never-told
check "./test --help explains itself" 0 'N passed, N failed' ./test --help
check "./test refuses what it does not know" 2 'no sideways' ./test sideways
for command in soak threads nightly; do
    check "./test $command refuses what it does not know" 2 'no --sideways' ./test "$command" --sideways
done
check "./test soak wants a number of jobs" 2 'jobs needs a number' ./test soak --jobs many
check "every package is listed with its purpose" 0 '^all$' every_package_has_a_purpose
exit "$failed"
