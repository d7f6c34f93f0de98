#!/bin/sh
# usage: nightly [--short]   what takes too long for ./test, one after the other; --short tries each out
#
# Each is a command of its own, which works alone as well.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)

# A command a line, and after the bar how it is tried out.
commands='
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
sh "$root/tools/install-packages.sh" nightly || { echo "0 passed, 1 failed"; exit 1; }
echo "$commands" | cut -d'|' -f"$form" | sh "$root/tools/series.sh" nightly
