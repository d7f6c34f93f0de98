#!/bin/sh
# usage: nightly [--short]   all checks that take too long for ./test; --short runs each for a short time
#
# Each check is also a command that can be run alone.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)

# Each line has a command and, after the bar, its short form.
commands='
fuzz --minutes 30   | fuzz --minutes 1 command_line
fuzz_coverage       | fuzz_coverage
mutate              | mutate --changed
mutate_windows      | mutate_windows --changed
soak                | soak --short
languages           | languages ml
threads             | threads --short
portability         | portability
'
case ${1:-} in
'') form=1 ;;
--short) form=2 ;;
*) echo "nightly.sh: there is no $1" >&2; exit 2 ;;
esac
sh "$root/tools/install-packages.sh" nightly || { echo "0 passed, 1 failed"; exit 1; }
echo "$commands" | cut -d'|' -f"$form" | sh "$root/tools/series.sh" nightly
