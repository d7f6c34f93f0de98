#!/bin/sh
# place-spooler.sh FILE: copies FILE as winspool.drv into the system folder of the prefix WINEPREFIX.
# with-wine.sh calls it. A program uses FILE only if it has an override for winspool.drv; all other
# programs go on using Wine's own spooler.
set -eu
# The file there is a link into the template that all prefixes share, so the link must be replaced.
# Writing through it would change every prefix.
cp --remove-destination "$1" "$WINEPREFIX/drive_c/windows/system32/winspool.drv"
