#!/bin/sh
# usage: mutate [--changed] [--survivors] [FILE|FOLDER...]   makes one small change at a time and demands that a test fails
set -u
tools=$(dirname "$0")/..
sh "$tools/install-packages.sh" nightly || { echo "0 passed, 1 failed"; exit 1; }
exec "$tools/mutate.py" --jobs "$(nproc)" "$@"
