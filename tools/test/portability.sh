#!/bin/sh
# usage: portability   the tests with LLVM's standard library and without the precompiled header
#
# This finds missing includes: a source that does not include what it uses may still compile if another
# header of the standard library or the precompiled header happens to include it.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
if ! sh tools/install-packages.sh nightly || ! sh tools/build-quietly.sh host-libcxx; then
    echo "0 passed, 1 failed"
    exit 1
fi
exec python3 tools/test/run_tests.py "host-libcxx -j $(nproc) --timeout 900"
