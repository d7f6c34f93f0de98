#!/bin/sh
# series.sh NAME: reads commands of ./test from its standard input, one on each line, and runs them one
# after the other, also after a failure. At the end it prints what failed once more, a table of them and the
# sum of their "N passed, N failed". The logs stay in build/NAME.
set -u
name=$1
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root" || exit 1
logs=$root/build/$name
mkdir -p "$logs"
rm -f "$logs"/*.log "$logs/table"
passed=0 failed=0 failures=
# The commands write to a pipe and not to the terminal. This descriptor lets them show their progress there.
if [ -t 1 ]; then
    exec 3>&1
    export BEAMLINE_PROGRESS_FD=3
fi
began=$(date +%s)
since() { printf '%d:%02d:%02d' $((($2 - $1) / 3600)) $((($2 - $1) / 60 % 60)) $((($2 - $1) % 60)); }

while read -r command arguments; do
    [ -n "$command" ] || continue
    printf '\n== ./test %s\n' "$command${arguments:+ $arguments}"
    start=$(date +%s)
    # A missing command counts as a failure too. $arguments is not quoted, so that it is split into words.
    # shellcheck disable=SC2086
    { sh "$root/test" "$command" $arguments </dev/null 2>&1; echo "$?" >"$logs/status"; } | tee "$logs/$command.log"
    last=$(tail -n 1 "$logs/$command.log")
    case $last in
    *[0-9]' passed, '*[0-9]' failed')
        good=${last%% passed*}
        bad=${last##*, }
        bad=${bad% failed} ;;
    *) good=0 bad=1 last='ended without a count' ;;
    esac
    status=$(cat "$logs/status")
    [ "$status" = 0 ] || [ "$bad" -gt 0 ] || { bad=1 last="$last, but exit code $status"; }
    verdict=ok
    if [ "$bad" -gt 0 ]; then
        verdict='NOT OK'
        failures="$failures $command"
    fi
    printf '%-14s %-7s %8s   %s\n' "$command" "$verdict" "$(since "$start" "$(date +%s)")" "$last" >>"$logs/table"
    passed=$((passed + good)) failed=$((failed + bad))
done

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
