#!/bin/sh
# usage: mutate [--changed] [--survivors] [FILE|FOLDER...]   changes the logic token by token and demands that a test fails
set -u
exec "$(dirname "$0")/../mutate.py" --jobs "$(nproc)" "$@"
