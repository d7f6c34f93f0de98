#!/bin/sh
# usage: instructions   instructions of the framework beside those of plain code, how they grow, and whether they keep their aims
#
# docs/benchmarks.md says what is compared. The counts do not depend on what else the machine does.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
if ! sh tools/install-packages.sh ci || ! sh tools/build-quietly.sh host run_workload growth ||
    ! sh bench/growth.sh build/host/bench/growth --check; then
    echo "0 passed, 1 failed"
    exit 1
fi
exec sh bench/instructions.sh build/host/bench/run_workload --check
