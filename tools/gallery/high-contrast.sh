#!/bin/sh
# high-contrast.sh TESTS OUT: shows one alert of each template in two high-contrast schemes, within
# with-wine.sh, and leaves the pictures in OUT/high-contrast-black and OUT/high-contrast-white. TESTS is the
# folder of alert_gallery.exe.
#
# Wine knows no such schemes, so the program is told that there is one and the colours come from the registry,
# where programs that start afterwards find them. Themed buttons would keep their own colours.
set -eu
tests=$1
out=$2
templates=6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# show NAME BACK TEXT LINK CHOSEN CHOSEN_TEXT GREY: shows the alerts in these colours (red green blue).
show() {
    {
        printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Control Panel\\Colors]\n'
        for key in ButtonFace Window Menu Scrollbar ButtonAlternateFace ActiveTitle GradientActiveTitle \
            ButtonShadow InactiveTitle GradientInactiveTitle InfoWindow; do
            printf '"%s"="%s"\n' "$key" "$2"
        done
        for key in ButtonText WindowText WindowFrame MenuText TitleText ButtonHilight ButtonLight ButtonDkShadow \
            InactiveTitleText InfoText ActiveBorder; do
            printf '"%s"="%s"\n' "$key" "$3"
        done
        printf '"HotTrackingColor"="%s"\n"Hilight"="%s"\n"HilightText"="%s"\n"GrayText"="%s"\n' "$4" "$5" "$6" "$7"
        printf '\n[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager]\n'
        printf '"ThemeActive"="0"\n'
    } >"$work/$1.reg"
    wine regedit /S "Z:$work/$1.reg" >/dev/null 2>&1 </dev/null
    rm -rf "${out:?}/$1"
    mkdir -p "$out/$1"
    wine "$tests/alert_gallery.exe" "Z:$out/$1" >/dev/null 2>&1 </dev/null
    mogrify -format png "$out/$1/*.bmp"
    rm "$out/$1"/*.bmp
    found=$(find "$out/$1" -name '*.png' | wc -l)
    if [ "$found" -ne $templates ]; then
        echo "./run gallery: there are $found pictures instead of $templates in $out/$1" >&2
        exit 1
    fi
    echo "$1: $found pictures"
}

show high-contrast-black '0 0 0' '255 255 255' '255 255 0' '26 235 255' '0 0 0' '63 242 63'
show high-contrast-white '255 255 255' '0 0 0' '0 0 159' '55 0 110' '255 255 255' '96 0 0'
