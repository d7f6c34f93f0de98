#!/bin/sh
# make-prefix.sh DIR: a Wine prefix with fonts, virtual desktop and no debugger, to be copied by
# with-wine.sh. Without a debugger a crash ends the program at once, as it does on a person's Windows; with the
# one of Debian 13 it never ended.
# Does nothing when DIR is complete already; safe to call from several tests at once.
set -eu
mkdir -p "$(dirname "$1")"
dir=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")  # Wine wants the whole path
exec 9>"$dir.lock"
flock 9
# A prefix that another version of this script has made is made anew.
made_by=$(cksum <"$0")
[ "$(cat "$dir/.complete" 2>/dev/null)" = "$made_by" ] && exit 0
rm -rf "$dir"

export WINEPREFIX="$dir" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
export LC_ALL=C.UTF-8  # otherwise the first test's language would choose the font of dialogs for all tests
unset DISPLAY
wineboot -i >/dev/null 2>&1 </dev/null 9>&-
fonts="$WINEPREFIX/drive_c/windows/Fonts"
mkdir -p "$fonts"
ln -sf /usr/share/wine/fonts/marlett.ttf /usr/share/wine/fonts/*.fon "$fonts/"

cat >"$WINEPREFIX/settings.reg" <<'R'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine]
"Version"="win10"

[HKEY_CURRENT_USER\Software\Wine\Explorer]
"Desktop"="Default"

[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]
"Default"="1280x1024"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\AeDebug]
"Debugger"="none"

[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Tahoma"="DejaVu Sans Condensed"
"Segoe UI"="DejaVu Sans Condensed"
"Microsoft Sans Serif"="DejaVu Sans Condensed"
"MS Sans Serif"="DejaVu Sans Condensed"
"SimSun"="DejaVu Sans Condensed"
"Times New Roman"="Liberation Serif"
"Arial"="Liberation Sans"
"Courier New"="Liberation Mono"

[HKEY_CURRENT_USER\Control Panel\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000001
"FontSmoothingGamma"=dword:00000578
"FontSmoothingOrientation"=dword:00000001
R
wine regedit /S "Z:$WINEPREFIX/settings.reg" </dev/null >/dev/null 2>&1 9>&-
# Chinese letters come from another font, which must be named for every face that a text may use.
for face in "DejaVu Sans" "DejaVu Sans Bold" "DejaVu Sans Condensed" "DejaVu Sans Condensed Bold" \
    "Liberation Sans" "Liberation Sans Bold" "Liberation Serif" "Liberation Serif Bold"; do
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' \
        /v "$face" /t REG_MULTI_SZ /d 'NotoSansCJK-Regular.ttc,Noto Sans CJK SC' /f \
        </dev/null >/dev/null 2>&1 9>&-
done
wineserver -k || :
wineserver -w
echo "$made_by" >"$dir/.complete"
