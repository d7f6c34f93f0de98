#!/bin/sh
# check.sh PROGRAM EXPECTED: compares the bitmaps and icons in the resources of a Windows program with a
# list of those that it should have: expected.txt explains the list. Prints what differs.
set -eu
program=$1 expected=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# each TYPE: id and language of every resource of this type.
each() {
    wrestool -l --type="$1" "$program" | sed -n 's/.*--name=\([0-9]*\) --language=\([0-9]*\).*/\1 \2/p'
}

bitmap=2 icon=14
each $bitmap | while read -r id language; do
    wrestool -x --type=$bitmap --name="$id" --language="$language" -o "$folder/$id.bmp" "$program"
    # With the virtual pixels around it, the picture repeats itself: -1 is its last row or column.
    convert "$folder/$id.bmp" -virtual-pixel tile \
        -print '%wx%h %[hex:p{0,0}] %[hex:p{-1,0}] %[hex:p{0,-1}] %[hex:p{-1,-1}]\n' \
        -format %c histogram:info: >"$folder/facts"
    size=$(sed '1s/ .*//;q' "$folder/facts")
    corners=$(sed 1q "$folder/facts" | tr ' ' '\n' | sed 1d | sort -u | paste -sd ' ')
    colour=$(sed 1d "$folder/facts" | sort -rn | sed -n '1s/.*#\([0-9A-F]*\).*/\1/p')
    echo "bitmap $id $language $size $corners $colour"
done >"$folder/found"
each $icon | while read -r id language; do
    wrestool -x --type=$icon --name="$id" --language="$language" -o "$folder/$id.ico" "$program"
    echo "icon $id $language $(identify -format '%wx%h ' "$folder/$id.ico")"
done | sed 's/ *$//' >>"$folder/found"

sed 's/ *#.*//; /^$/d' "$expected" | diff - "$folder/found" >"$folder/differences" || {
    echo "The pictures of $program are not those of $expected (< expected, > found):"
    cat "$folder/differences"
    exit 1
}
