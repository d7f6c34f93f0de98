#!/bin/sh
# play.sh BIN OUT WHAT LANGUAGE...: plays the gallery's scenarios in each language, within with-wine.sh, and
# leaves their pictures in OUT/LANGUAGE. WHAT is all, or three for three alerts only.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
bin=$1
out=$2
what=$3
shift 3
scenarios=$here/../../scenarios/gallery
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LOCPATH="$here/../../build/locales"
sh "$here/../wine/place-spooler.sh" "$bin/simulated-spooler/winspool.drv"

# play LANGUAGE SCENARIO VARIABLE=VALUE...: plays a scenario in a session with these environment variables.
play() {
    language=$1
    scenario=$2
    shift 2
    case $language in
    ar | he) echo right-to-left-desktop ;;
    esac | cat - "$scenarios/$scenario.txt" >"$work/$scenario.txt"
    if ! env -u LC_ALL "$@" wine "$bin/printpath.exe" --clean --pictures "Z:$work/pictures" \
        "Z:$work/$scenario.txt" >"$work/log" 2>&1 </dev/null; then
        cat "$work/log"
        echo "./run gallery: $scenario in the language $language did not go as it should" >&2
        exit 1
    fi
}

# link_font FONT: takes the Chinese letters from this cut of their font. Chinese, Japanese and Korean write some
# of them in different forms.
link_font() {
    for face in "" " Bold"; do
        wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' \
            /v "Beamline Test Sans$face" /t REG_MULTI_SZ /d "NotoSansCJK-Regular.ttc,$1" /f >/dev/null 2>&1 </dev/null
    done
}

for language in "$@"; do
    begin=$(date +%s)
    mkdir "$work/pictures"
    row=$(sh "$here/row-of.sh" "$language")
    locale=$(printf '%s\n' "$row" | cut -f 5)
    font=$(printf '%s\n' "$row" | cut -f 6)
    case $font in
    *CJK*) link_font "$font" ;;
    esac
    # The cartridge check is offered on systems whose language is Chinese, whatever the user's language is.
    if [ "$what" = three ]; then
        play "$language" languages LC_CTYPE=zh_CN.UTF-8 LC_MESSAGES="$locale"
    else
        play "$language" alerts LC_ALL="$locale"
        play "$language" other-printer LC_ALL="$locale"
        play "$language" cartridge-check LC_CTYPE=zh_CN.UTF-8 LC_MESSAGES="$locale"
    fi
    mogrify -format png "$work/pictures/*.bmp"
    rm -rf "${out:?}/$language"
    mkdir -p "$out/$language"
    mv "$work/pictures"/*.png "$out/$language/"
    rm -rf "$work/pictures"
    echo "$language: $(find "$out/$language" -name '*.png' | wc -l) pictures in $(($(date +%s) - begin)) s"
done
