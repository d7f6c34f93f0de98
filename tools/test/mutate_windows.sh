#!/bin/sh
# usage: mutate_windows [--changed] [--survivors] [FILE|FOLDER...]   the same with the Windows-only sources, under Wine
set -u
# Tests with windows wait more than they compute.
exec sh "$(dirname "$0")/mutate.sh" windows --jobs $((2 * $(nproc))) "$@"
