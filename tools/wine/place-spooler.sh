#!/bin/sh
# place-spooler.sh FILE: puts FILE as winspool.drv into the system folder of the prefix WINEPREFIX, within
# with-wine.sh. Wine goes on using a spooler of its own in every program that has no override for it.
set -eu
# The file there is a link into the template that all prefixes share: it is removed, not written to.
cp --remove-destination "$1" "$WINEPREFIX/drive_c/windows/system32/winspool.drv"
