# Draws docs/performance.svg from the table of lengths in docs/performance.md.
#   gnuplot bench/performance.gp

set terminal svg size 1260,380 font "DejaVu Sans,10" background "white"
set output "docs/performance.svg"

# The lines of the table; its columns, counted with the empty one before the first bar:
# 2 hours, 3 events, 5 load, 6 save, 7 live, 8 memory, 9 file.
table = "<awk '/^\\| hours /{t=1} !NF{t=0} t && $2 > 0' docs/performance.md"
set datafile separator "|"

set logscale xy
set format y "%g"
set xlabel "length of the session, hours"
set xrange [0.01:24]
set xtics (0.01, 0.1, 1, 10)
set grid xtics ytics linecolor "#e4e7eb" linetype 1
set border 3 linecolor "#565e68"
set tics nomirror
set key left Left reverse samplen 2.5
# Told apart by their marks and dashes as well as by their colours.
set linetype 1 linecolor "#005293" pointtype 7 dashtype 1
set linetype 2 linecolor "#c44800" pointtype 5 dashtype 2
set linetype 3 linecolor "#006e50" pointtype 9 dashtype 4
set linetype 4 linecolor "#823c78" pointtype 11 dashtype 3
set style data linespoints
set pointsize 0.6

set multiplot layout 1,3
set title "CPU time of a whole session, seconds"
plot table using 2:5 title "load", table using 2:6 title "save", table using 2:7 title "live"
set title "Memory of a loaded session, size of its file, MB"
plot table using 2:8 title "memory", table using 2:9 title "file"
set title "CPU time per event, microseconds"
set yrange [0.1:100]
plot table using 2:($5 / $3 * 1e6) title "load", table using 2:($6 / $3 * 1e6) title "save", \
     table using 2:($7 / $3 * 1e6) title "live"
unset multiplot
