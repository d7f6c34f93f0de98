#!/bin/sh
# make-docs-pictures.sh: makes the pictures of the documentation: those of the page and the small gallery from
# what "./run gallery" has left in out/gallery, the large picture from that of "./run gallery --dpi 192", and that
# of all languages from that of "./run gallery --all-languages".
set -eu
cd "$(dirname "$0")/../../out/gallery/100"
docs=../../../docs/pictures

/usr/bin/python3 ../../../tools/gallery/page_pictures.py .. "$docs"
for name in catalogue catalogue-all catalogue-phone; do
    convert "$docs/$name.png" +dither -colors 128 "png8:$docs/$name.png"
done

# Every alert in English, and three of them in five languages.
montage en/*.png -tile 6x -geometry 250x+5+5 -background white miff:- |
    convert - +dither -colors 200 "png8:$docs/gallery.png"
set --
for name in 04-toner-low 03-second-sides 33-cartridge-check; do
    for language in en de zh_CN ar he; do
        set -- "$@" "$language/$name.png"
    done
done
montage "$@" -tile 5x -geometry 300x+5+5 -background white miff:- |
    convert - +dither -colors 200 "png8:$docs/gallery-languages.png"
convert ../200/en/04-toner-low.png +dither -colors 64 "png8:$docs/toner-low-192.png"

# What an alert says, in every language, under the name of the language in English. In a mirrored window the
# words begin at the other side.
width=753
set --
while IFS="$(printf '\t')" read -r language _ english _; do
    picture=../../gallery-languages/$language/1-toner-low.png
    [ -f "$picture" ] || continue
    case $language in
    ar | he) side=NorthEast ;;
    *) side=NorthWest ;;
    esac
    set -- "$@" '(' "$picture" -resize "$width" -gravity "$side" -crop 545x215+15+95 +repage -set label "$english" ')'
done <../../../strings/languages.tsv
montage -font DejaVu-Sans -pointsize 12 "$@" -tile 4x -geometry 400x+5+3 -background white miff:- |
    convert - +dither -colors 16 "png8:$docs/gallery-all-languages.png"
