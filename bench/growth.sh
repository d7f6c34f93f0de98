#!/bin/sh
# growth.sh GROWTH PICTURE.svg | --check: prints how many instructions and how much memory the framework
# takes for things of growing size, and draws the picture of it.
#
# The last column is the exponent: how the instructions grow with the size, since the row before. 1 is
# linear; below 1, a larger one costs less for each unit of its size. With --check only two sizes of each
# series are measured, and an exponent above its limit is a failure. Instructions are counted, so a busy
# machine changes nothing.
set -eu
program=$1
picture=$2
sample=
[ "$picture" != --check ] || sample=sample
# Bags are searched by halves, so their keys may cost the logarithm of their number more. The number of
# idle turns while timers sleep depends on the time.
limits="listeners 1.05 keys 1.25 queue 1.05 body 1.05 timers 1.2"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# shellcheck disable=SC2086 # no argument where there is no sample
"$program" memory $sample >"$work/memory"
# shellcheck disable=SC2086
valgrind --tool=callgrind --max-threads=1500 --callgrind-out-file="$work/counts" \
    --zero-before=measureFrom --dump-before=measureTo "$program" count $sample >"$work/points" 2>"$work/log"

# One line for each point: series, size, bytes, instructions.
number=0
while read -r series size bytes; do
    number=$((number + 1))
    echo "$series $size $bytes $(sed -n 's/^\(summary\|totals\): \([0-9]*\).*/\2/p' "$work/counts.$number" | head -1)"
done <"$work/memory" >"$work/measured"

awk -v limits="$limits" -v check="$sample" '
    BEGIN {
        for (n = split(limits, words, " "); n > 0; n -= 2)
            limit[words[n - 1]] = words[n]
        print "| series | size | instructions | for each | KiB | exponent |"
        print "|---|---:|---:|---:|---:|---:|"
    }
    {
        exponent = "-"
        if ($1 == series && size > 0) exponent = sprintf("%.2f", log($4 / instructions) / log($2 / size))
        printf "| %s | %d | %d | %.1f | %.1f | %s |\n", $1, $2, $4, $4 / ($2 > 0 ? $2 : 1), $3 / 1024, exponent
        if (check && exponent != "-" && exponent > limit[$1]) {
            print "The cost of " $1 " grows faster than its limit: " exponent " and not " limit[$1] >"/dev/stderr"
            missed = 1
        }
        series = $1; size = $2; instructions = $4
    }
    END { exit missed }' "$work/measured"
[ -z "$sample" ] || exit 0

gnuplot -e "data = '$work/measured'; picture = '$picture'" - <<'PLOT'
series = "listeners keys queue body timers"
of(name) = strcol(1) eq name && column(2) > 0 ? column(2) : NaN
set terminal svg size 900,420 font "sans-serif,12" background rgb "white"
set output picture
set multiplot layout 1,2
set logscale xy
set format "10^{%L}"
set grid
set key right bottom
set linetype 5 lc rgb "#8b4513"
set datafile missing NaN
set xlabel "size: listeners, keys, messages, bytes, timers"
set title "instructions; dotted: as many as the size"
plot for [name in series] data using (of(name)):4 with linespoints title name, x with lines dt 3 lc "gray" notitle
set title "bytes of the heap"
plot for [name in series] data using (of(name)):3 with linespoints title name
unset multiplot
PLOT
