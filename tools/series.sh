#!/bin/sh
# series.sh NAME: runs commands of ./test, which it reads from its standard input, one on each line. The lines
# up to the first empty one run one after the other, also after a failure. Then the paragraphs after it run at
# the same time, and in each of them one line after the other. At the end it prints what failed once more, a
# table of all commands and the sum of their "N passed, N failed". The logs stay in build/NAME.
set -u
name=$1
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root" || exit 1
logs=$root/build/$name
mkdir -p "$logs"
rm -f "$logs"/*
cat >"$logs/commands"
# The commands write to a pipe and not to the terminal. This descriptor lets them show their progress there.
if [ -t 1 ]; then
    exec 3>&1
    export BEAMLINE_PROGRESS_FD=3
fi
began=$(date +%s)
since() { printf '%d:%02d:%02d' $((($2 - $1) / 3600)) $((($2 - $1) / 60 % 60)) $((($2 - $1) % 60)); }

# Every line says whose it is, because the lines of two commands may come in turn.
run_paragraph() {
    awk -v RS= -v number="$1" 'NR == number' "$logs/commands" | while read -r command arguments; do
        printf '\n== ./test %s\n' "$command${arguments:+ $arguments}"
        start=$(date +%s)
        # A missing command counts as a failure too. $arguments is not quoted, so that it is split into words.
        # shellcheck disable=SC2086
        { sh "$root/test" "$command" $arguments </dev/null 2>&1; echo "$?" >"$logs/$command.status"; } |
            tee "$logs/$command.log" | sed -u "s/^/$command: /"
        since "$start" "$(date +%s)" >"$logs/$command.time"
    done
}

run_paragraph 1
paragraph=1
while [ "$paragraph" -lt "$(awk -v RS= 'END { print NR }' "$logs/commands")" ]; do
    paragraph=$((paragraph + 1))
    run_paragraph "$paragraph" &
done
wait

passed=0 failed=0 failures=
while read -r command _; do
    [ -n "$command" ] || continue
    last=$(tail -n 1 "$logs/$command.log")
    case $last in
    *[0-9]' passed, '*[0-9]' failed')
        good=${last%% passed*}
        bad=${last##*, }
        bad=${bad% failed} ;;
    *) good=0 bad=1 last='ended without a count' ;;
    esac
    status=$(cat "$logs/$command.status")
    [ "$status" = 0 ] || [ "$bad" -gt 0 ] || { bad=1 last="$last, but exit code $status"; }
    verdict=ok
    if [ "$bad" -gt 0 ]; then
        verdict='NOT OK'
        failures="$failures $command"
    fi
    printf '%-14s %-7s %8s   %s\n' "$command" "$verdict" "$(cat "$logs/$command.time")" "$last" >>"$logs/table"
    passed=$((passed + good)) failed=$((failed + bad))
done <"$logs/commands"

# A long log often reaches its reader without the beginning, so what failed stands at its end as well.
for command in $failures; do
    printf '\n== What failed in ./test %s\n' "$command"
    # Each failed test begins with "---". A command without such a line tells what is wrong in its last ones.
    grep -A 25 '^--- ' "$logs/$command.log" | head -n 200 | grep . || tail -n 25 "$logs/$command.log"
done
printf '\n%-14s %-7s %8s\n' command verdict time
cat "$logs/table"
printf '%-14s %-7s %8s\n' all '' "$(since "$began" "$(date +%s)")"
echo "The logs are in build/$name."
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
