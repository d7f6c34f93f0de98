#!/bin/sh
# play.sh BIN OUT LANGUAGE...: plays the gallery's scenarios in each language, within with-wine.sh, and
# leaves their pictures in OUT/LANGUAGE.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
bin=$1
out=$2
shift 2
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

for language in "$@"; do
    begin=$(date +%s)
    mkdir "$work/pictures"
    locale=$(sh "$here/locale-of.sh" "$language")
    play "$language" alerts LC_ALL="$locale"
    play "$language" other-printer LC_ALL="$locale"
    # The cartridge check is offered on systems whose language is Chinese, whatever the user's language is.
    play "$language" cartridge-check LC_CTYPE=zh_CN.UTF-8 LC_MESSAGES="$locale"
    mogrify -format png "$work/pictures/*.bmp"
    rm -rf "${out:?}/$language"
    mkdir -p "$out/$language"
    mv "$work/pictures"/*.png "$out/$language/"
    rm -rf "$work/pictures"
    echo "$language: $(find "$out/$language" -name '*.png' | wc -l) pictures in $(($(date +%s) - begin)) s"
done
