"""Draws the charts of docs/performance.md with gnuplot, as SVG on a ground of their own, so that
they read alike on a light page and on a dark one."""
import os
import statistics
import subprocess

OURS, OTHER, THIRD, FOURTH, GREY = "#0072b2", "#d55e00", "#009e73", "#aa4499", "#6e7781"
STYLE = """
set terminal svg size {width},{height} noenhanced font "Helvetica,Arial,sans-serif,14" \\
    background "#ffffff" linewidth 1.2
set output "{path}"
set border 3 linecolor rgb "#57606a"
set tics nomirror textcolor rgb "#24292f"
set grid linecolor rgb "#d8dee4" linetype 1
set title "{title}" textcolor rgb "#24292f"
set key textcolor rgb "#24292f"
"""
SIZES = '("100" 100, "1,000" 1e3, "5,000" 5e3, "10,000" 1e4, "50,000" 5e4, "100,000" 1e5)'
TIMES = ('("100 ns" 1e-7, "1 µs" 1e-6, "10 µs" 1e-5, "100 µs" 1e-4, "1 ms" 1e-3, "10 ms" 1e-2, '
         '"100 ms" 0.1, "1 s" 1, "10 s" 10)')


def draw(folder, name, title, size, script):
    path = os.path.join(folder, name)
    width, height = size
    text = STYLE.format(path=path, title=title, width=width, height=height) + script
    subprocess.run(["gnuplot"], input=text, encoding="utf-8", check=True)


def block(name, lines):
    return f"${name} << END\n" + "\n".join(lines) + "\nEND\n"


def points(figures, subject, side):
    """Size, median, least and most seconds of each size that was taken."""
    for (of, by, size), repetitions in sorted(figures.items()):
        if (of, by) == (subject, side):
            seconds = [repetition["seconds"] for repetition in repetitions]
            yield f"{size} {statistics.median(seconds)} {min(seconds)} {max(seconds)}"


def against_size(figures, folder, name, title, lines):
    """Time against a size on scales of tens; each line is subject, side, words and colour."""
    data, plots = "", []
    least = min((size for subject, _, size in figures if subject == lines[0][0]), default=1)
    for number, (subject, side, words, colour) in enumerate(lines):
        taken = list(points(figures, subject, side))
        if not taken:
            return  # the chart stays as it is
        data += block(f"line{number}", taken)
        plots.append(f'$line{number} using 1:2 with lines linecolor rgb "{colour}" '
                     f'linewidth 2 title "{words}"')
        plots.append(f'$line{number} using 1:2:3:4 with yerrorbars linecolor rgb "{colour}" '
                     'pointtype 7 pointsize 0.6 notitle')
    draw(folder, name, title, (760, 440), data + f"""
set logscale xy
set xtics {SIZES}
set xrange [{least * 0.8}:1.3e5]
set ytics {TIMES}
set key bottom center outside horizontal Left reverse samplen 2
plot {", ".join(plots)}
""")


def bars(folder, name, title, rows, goal, goal_of, marks=(), marks_of=""):
    """A bar for each (words, median, least, most), the longest on top, and where the goal stands;
    marks has by the words of some bars where something else of theirs stands."""
    if not rows:
        return
    rows = sorted(rows, key=lambda row: row[1])
    marked = [f"{marks[row[0]]} {place}" for place, row in enumerate(rows) if row[0] in marks]
    plot_marks = (f'$marks using 1:2 with points linecolor rgb "{THIRD}" pointtype 7 '
                  f'pointsize 0.7 title "{marks_of}", ' if marked else "")
    labels = ", ".join(f'"{row[0]}" {place}' for place, row in enumerate(rows))
    data = block("bars", (f"{place} {row[1]} {row[2]} {row[3]}" for place, row in enumerate(rows)))
    draw(folder, name, title, (760, 90 + 20 * len(rows)), data + block("marks", marked) + f"""
set ytics ({labels})
set yrange [-0.7:{len(rows) - 0.3}]
set xrange [0:*]
set grid noytics xtics
set key right bottom
set style fill solid
set arrow from {goal}, graph 0 to {goal}, graph 1 nohead linecolor rgb "{OTHER}" linewidth 2 front
plot $bars using ($2/2):1:($2/2):(0.35) with boxxyerror linecolor rgb "{OURS}" notitle, \\
    $bars using 2:1:3:4 with xerrorbars linecolor rgb "#24292f" pointtype 0 notitle, \\
    {plot_marks}NaN with lines linecolor rgb "{OTHER}" linewidth 2 title "{goal_of}"
""")


def cells_in_parses(figures):
    """By table what Qt needs to parse 10,000 rows and read every value, in times of the parse."""
    median = {}
    for (subject, side, size), repetitions in figures.items():
        if subject.startswith("load_") and size == 10000:
            seconds = statistics.median(repetition["seconds"] for repetition in repetitions)
            median[subject[len("load_"):], side] = seconds
    return {table: seconds / median[table, "parse"] for (table, side), seconds in median.items()
            if side == "cells" and (table, "parse") in median}


def draw_all(figures, rows, folder):
    os.makedirs(folder, exist_ok=True)
    against_size(figures, folder, "loading.svg", "Loading the gift table, by its rows", [
        ("load_CS_GiftList", "ours", "the gift table, loaded", OURS),
        ("load_CS_GiftList", "cells", "Qt: parsed, every value read", THIRD),
        ("load_CS_GiftList", "parse", "Qt: parsed", OTHER)])
    against_size(figures, folder, "filter.svg", "Masking a line of 40 characters, by the words of the list", [
        ("mask_clean", "literal", "literal procedure, clean lines", OTHER),
        ("mask_letters", "ours", "Latin letters", FOURTH),
        ("mask_zipf", "ours", "Zipf-like frequency", THIRD),
        ("mask_three", "ours", "three masks", GREY),
        ("mask_clean", "ours", "clean lines", OURS)])
    bars(folder, "tables.svg", "Loading 10,000 rows, in times of Qt's parse",
         [(row["subject"][len("load_"):], row["median"], row["least"], row["most"])
          for row in rows if row["subject"].startswith("load_") and row.get("against") == "parse"
          and row["size"] == 10000], 2.0, "goal",
         cells_in_parses(figures), "Qt: parsed, every value read")
    heap = []
    for (subject, side, size), repetitions in figures.items():
        if subject.startswith("load_") and side == "ours" and size == 10000:
            values = [repetition["heap_per_byte"] for repetition in repetitions]
            heap.append((subject[len("load_"):], statistics.median(values), min(values),
                         max(values)))
    bars(folder, "memory.svg", "Heap held by 10,000 rows, in times of the file's bytes", heap, 2.5,
         "goal of the gift table")
