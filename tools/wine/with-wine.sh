#!/bin/sh
# with-wine.sh TEMPLATE COMMAND...: runs COMMAND with its own Wine prefix and X display, which are
# removed afterwards. The prefix is a copy of TEMPLATE, which make-prefix.sh makes at the first use.
# With BEAMLINE_SPOOLER=FILE the prefix gets this file as its spooler (see place-spooler.sh).
# With BEAMLINE_KEEP_DISPLAY=1, windows appear on the user's DISPLAY if there is one.
# With BEAMLINE_DPI=NUMBER the screen has this many dots per inch instead of 96, and as much room as before.
# With BEAMLINE_ALL_SCRIPTS=1 the dialogs have a font with the scripts of all languages (see make_font.py).
set -eu
template=$1
shift
here=$(cd "$(dirname "$0")" && pwd)
fonts=$here/../../build/wine-fonts
sh "$here/make-prefix.sh" "$template"
[ "${BEAMLINE_ALL_SCRIPTS:-0}" != 1 ] || sh "$here/make-font.sh" "$fonts"

dpi=${BEAMLINE_DPI:-96}
screen=$((1280 * dpi / 96))x$((1024 * dpi / 96))

work=$(mktemp -d "${TMPDIR:-/tmp}/beamline-wine.XXXXXX")
xpid=
finish() {
    status=$?
    trap - EXIT
    WINEPREFIX="$work/prefix" wineserver -k >/dev/null 2>&1 || :
    [ -z "$xpid" ] || kill "$xpid" 2>/dev/null || :
    rm -rf "$work" 2>/dev/null || { sleep 0.5; rm -rf "$work" 2>/dev/null || :; }
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT TERM HUP

# The system's files, 700 MB of them, become symbolic links to the template's. The registry, the files
# of the user and all files that programs write to are copies, because Wine's server and the programs
# write them in place and would change the template.
copy_prefix() {
    mkdir -p "$2/drive_c"
    cp -a "$1"/*.reg "$1"/.update-timestamp "$1"/dosdevices "$2/"
    for folder in "$1"/drive_c/*; do
        [ "$folder" = "$1/drive_c/windows" ] || cp -a "$folder" "$2/drive_c/"
    done
    cp -rs "$1/drive_c/windows" "$2/drive_c/"
    cp --remove-destination "$1"/drive_c/windows/*.ini "$2/drive_c/windows/"
}

# Programs ask for the usual fonts, which the registry replaces. Chinese letters still come through a link.
use_font_of_all_scripts() {
    cp "$fonts"/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    sed -i 's/="DejaVu Sans Condensed"$/="Beamline Test Sans"/' "$WINEPREFIX/user.reg"
    sed -i 's/^"DejaVu Sans Condensed\(\( Bold\)\{0,1\}"=str(7):.*\)/&\n"Beamline Test Sans\1/' "$WINEPREFIX/system.reg"
}

if [ "${BEAMLINE_KEEP_DISPLAY:-0}" != 1 ] || [ -z "${DISPLAY:-}" ]; then
    Xvfb -displayfd 3 -screen 0 "${screen}x24" -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
    xpid=$!
    tries=0
    while ! [ -s "$work/display" ]; do
        tries=$((tries + 1))
        if [ "$tries" -gt 200 ]; then
            echo "with-wine.sh: the virtual display (Xvfb) did not start" >&2
            exit 1
        fi
        sleep 0.05
    done
    DISPLAY=":$(cat "$work/display")"
fi

export DISPLAY WINEPREFIX="$work/prefix" WINEARCH=win64 WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}" LC_ALL="${LC_ALL:-C.UTF-8}"
copy_prefix "$(cd "$template" && pwd)" "$WINEPREFIX"
# Before the server reads it for the first time.
if [ "$dpi" -ne 96 ]; then
    sed -i -e "s/^\\[Control Panel\\\\\\\\Desktop\\].*/&\n\"LogPixels\"=dword:$(printf %08x "$dpi")/" \
        -e "s/^\"Default\"=\"1280x1024\"/\"Default\"=\"$screen\"/" "$WINEPREFIX/user.reg"
fi
[ "${BEAMLINE_ALL_SCRIPTS:-0}" != 1 ] || use_font_of_all_scripts
[ -z "${BEAMLINE_SPOOLER:-}" ] || sh "$here/place-spooler.sh" "$BEAMLINE_SPOOLER"
# The first process starts service processes that keep its input and output open. It gets neither of
# ours, because whoever reads our output would then wait for the services to end.
wineserver -p >/dev/null 2>&1 </dev/null
# Only the started Wine can be told the font of dialogs: it chooses one itself when the language is not the one
# that the prefix was made in. Wine 10 also has a Tahoma of its own, which knows few scripts.
font='DejaVu Sans Condensed'
[ "${BEAMLINE_ALL_SCRIPTS:-0}" != 1 ] || font='Beamline Test Sans'
cat >"$work/fonts.reg" <<R
REGEDIT4

[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion\\FontSubstitutes]
"MS Shell Dlg"="$font"
"MS Shell Dlg 2"="$font"
"Tahoma"="$font"
R
wine regedit /S "Z:$work/fonts.reg" </dev/null >/dev/null 2>&1
"$@"
