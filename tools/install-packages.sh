#!/bin/sh
# install-packages.sh run|release|test|ci|nightly: installs the packages of tools/packages.txt that are
# missing, with sudo when it is not root. "release" and "test" need what "run" needs, "ci" what all of these
# need, "nightly" everything. Says nothing when nothing is missing.
set -eu
case $1 in
run) purposes=' run ' ;;
release) purposes=' run release ' ;;
test) purposes=' run test ' ;;
ci) purposes=' run release test ci ' ;;
*) purposes=' run release test ci nightly ' ;;
esac
list=$(dirname "$0")/packages.txt
release=$(sed -n 's/^VERSION_ID="\{0,1\}\([^"]*\)"\{0,1\}$/\1/p' /etc/os-release)

missing=
while read -r package needed_for only_in; do
    case $package in '' | '#'*) continue ;; esac
    case $purposes in *" $needed_for "*) ;; *) continue ;; esac
    [ -z "$only_in" ] || [ "$only_in" = "$release" ] || continue
    case $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || :) in
    *' ok installed') ;;
    *) missing="$missing $package" ;;
    esac
done <"$list"
[ -n "$missing" ] || exit 0

as_root=
[ "$(id -u)" -eq 0 ] || as_root=sudo
if [ -n "$as_root" ] && ! command -v sudo >/dev/null; then
    echo "install-packages.sh: not root and no sudo; please install:$missing" >&2
    exit 1
fi
echo "Installing:$missing"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
export DEBIAN_FRONTEND=noninteractive
# shellcheck disable=SC2086
{ $as_root apt-get -q update &&
    $as_root apt-get -q install -y --no-install-recommends $missing; } >"$log" 2>&1 </dev/null || {
    cat "$log" >&2
    exit 1
}
