#!/bin/sh
# usage: portability   the logic with LLVM's standard library and without the tests' precompiled header
#
# What one standard library or a precompiled header brings along, another build lacks: a missing include is
# found here.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
if ! sh tools/install-packages.sh nightly || ! sh tools/build-quietly.sh host-libcxx; then
    echo "0 passed, 1 failed"
    exit 1
fi
exec python3 tools/test/run_tests.py "host-libcxx -j $(nproc) --timeout 900"
