#!/bin/sh
# usage: nightly [--short]   what takes too long for ./test, one after the other; --short tries each out
#
# Each is a command of its own, which works alone as well and prints "N passed, N failed" last. One that
# fails does not keep the others from running.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1

# A command a line, and after the bar how it is tried out.
commands='
winelib             | winelib platform
fuzz --minutes 30   | fuzz --minutes 1 command_line
fuzz_coverage       | fuzz_coverage
mutate              | mutate --changed
soak                | soak --short
threads             | threads --short
portability         | portability
'
case ${1:-} in
'') form=1 ;;
--short) form=2 ;;
*) echo "nightly.sh: there is no $1" >&2; exit 2 ;;
esac

sh tools/install-packages.sh nightly || { echo "0 passed, 1 failed"; exit 1; }
logs=$root/build/nightly
mkdir -p "$logs"
rm -f "$logs"/*.log "$logs/table"
passed=0 failed=0
began=$(date +%s)
since() { printf '%d:%02d:%02d' $((($2 - $1) / 3600)) $((($2 - $1) / 60 % 60)) $((($2 - $1) % 60)); }

echo "$commands" | grep -v '^$' | cut -d'|' -f"$form" >"$logs/commands"
while read -r command arguments; do
    printf '\n== ./test %s\n' "$command $arguments"
    start=$(date +%s)
    # A missing command is a failure too. Its arguments are words.
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
    [ "$bad" -eq 0 ] || verdict='NOT OK'
    printf '%-14s %-7s %9s   %s\n' "$command" "$verdict" "$(since "$start" "$(date +%s)")" "$last" >>"$logs/table"
    passed=$((passed + good)) failed=$((failed + bad))
done <"$logs/commands"

printf '\n%-14s %-7s %9s\n' command verdict time
cat "$logs/table"
printf '%-14s %-7s %9s\n' all '' "$(since "$began" "$(date +%s)")"
echo "The logs are in build/nightly."
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
