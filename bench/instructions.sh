#!/bin/sh
# instructions.sh RUN_WORKLOAD [--check]: prints for each pair of benchmarks how many instructions an
# operation takes on the framework's side and on the plain one, and their ratio. Two runs of different
# length are subtracted, so that start-up is not counted and the figures repeat.
# With --check, fails when a ratio is above its aim, and ends with the line "N passed, N failed".
set -eu
program=$1
check=${2:-}
few=1000
many=3000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# count NUMBER SIDE TIMES: instructions of the whole run; its checksum goes to $work/SIDE.
count() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$program" "$1" "$2" "$3" \
        >"$work/$2" 2>"$work/log"
    sed -n 's/^==[0-9]*== Collected : \([0-9]*\).*/\1/p' "$work/log"
}

# between NUMBER SIDE: how many instructions the longer run needs more than the shorter one.
between() {
    short=$(count "$1" "$2" $few)
    long=$(count "$1" "$2" $many)
    echo $((long - short))
}

printf '%-32s %12s %12s %8s %8s\n' "instructions an operation" framework plain ratio aim
"$program" >"$work/list"
passed=0 failed=0
while IFS='|' read -r number name aim; do
    ours=$(between "$number" framework)
    theirs=$(between "$number" plain)
    cmp -s "$work/framework" "$work/plain" || {
        echo "$name: the two sides do not do the same work" >&2
        exit 1
    }
    if awk -v name="$name" -v ours="$ours" -v theirs="$theirs" -v n=$((many - few)) -v aim="$aim" 'BEGIN {
        printf "%-32s %12.1f %12.1f %8.3f %8s\n", name, ours / n, theirs / n, ours / theirs,
               (aim > 0 ? aim : "-")
        exit (aim > 0 && ours / theirs > aim) }'; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
    fi
done <"$work/list"
[ "$check" = --check ] || exit 0
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
