#!/bin/sh
# play.sh BIN SCENARIO [OPTIONS]: plays one scenario with the programs of BIN, within with-wine.sh, in
# the language that the scenario asks for. The monitor begins with an empty memory.
set -eu
bin=$1
scenario=$2
shift 2
language=$(sed -n 's/^language  *\([A-Za-z_]*\).*$/\1/p' "$scenario" | head -n 1)
export LC_ALL="${language:-en_US}.UTF-8"
sh "$(dirname "$0")/../../tools/wine/place-spooler.sh" "$bin/simulated-spooler/winspool.drv"
exec wine "$bin/printpath.exe" --clean "$@" "Z:$scenario" </dev/null
