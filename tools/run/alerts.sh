#!/bin/sh
# usage: alerts         writes docs/alerts.md, the table of every alert, anew from the program
# usage: alerts json    prints the same facts for programs, with the texts in every language
set -eu
cd "$(dirname "$0")/../.."
case ${1:-table} in
table | json) ;;
*)
    echo "./run alerts: there is no $1; say nothing, or json" >&2
    exit 2
    ;;
esac
sh tools/install-packages.sh run >&2
sh tools/build-quietly.sh host alert_facts >&2
facts=build/host/tools/alert_facts/alert_facts
if [ "${1:-table}" = json ]; then
    exec "$facts" json .
fi
# In two steps, so that a failure leaves the page as it was.
page=$("$facts" table .)
printf '%s\n' "$page" >docs/alerts.md
echo "Page: docs/alerts.md"
