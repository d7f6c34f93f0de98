#!/bin/sh
# all-languages.sh: plays three alerts in every language that has texts, and makes one page of them,
# out/gallery-languages/index.html. Scripts that the font of the dialogs lacks are hard to read at its size, so
# their pictures are made at 200 %.
set -eu
cd "$(dirname "$0")/../.."
root=$(pwd)
out=$root/out/gallery-languages
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sh tools/build-player.sh
# Rows have the fields of strings/languages.tsv.
grep -v '^#' strings/languages.tsv | while read -r row; do
    language=${row%%	*}
    [ "$language" = en ] || [ -f "strings/po/$language.po" ] || continue
    sh tools/gallery/make-locale.sh "$(printf '%s\n' "$row" | cut -f 5)"
    case $row in
    *' UI') echo "$language" >>"$work/192" ;;
    *) echo "$language" >>"$work/96" ;;
    esac
    printf '%s\n' "$row" >>"$work/rows"
done
sh tools/gallery/make-locale.sh zh_CN.UTF-8

export BEAMLINE_ALL_SCRIPTS=1
rm -rf "$out"
for dpi in 96 192; do
    [ -f "$work/$dpi" ] || continue
    # shellcheck disable=SC2046
    BEAMLINE_DPI=$dpi sh tools/wine/with-wine.sh "$root/build/wine-template" \
        sh tools/gallery/play.sh "$root/build/windows/bin" "$out" three $(cat "$work/$dpi")
done
sh tools/gallery/make-languages-page.sh "$out" "$work/rows"
echo "Page: out/gallery-languages/index.html"
