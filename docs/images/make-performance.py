#!/usr/bin/env python3
"""make-performance.py BENCH.json: plots the time of a pixel by the size of the frame, and the speed
by the number of threads, with gnuplot.

BENCH.json is what `vistrel-bench 'sizes|threads' --json BENCH.json` writes. The plots are sizes.svg
and threads.svg beside this script.
"""

import json
import pathlib
import re
import subprocess
import sys

FOLDER = pathlib.Path(__file__).parent
STYLE = """
set terminal svg size 760,420 font "sans-serif,13" background rgb "white"
set grid ytics lc rgb "#dddddd"
set border 3
set tics nomirror
set key outside right top vertical
"""


def plot(name, settings, curves):
    """curves: a title and points (x, y) each."""
    parts = ", ".join(f'"-" title "{title}" with linespoints lw 2 pt 7 ps 0.6' for title, _ in curves)
    data = "".join("".join(f"{x} {y}\n" for x, y in points) + "e\n" for _, points in curves)
    script = f'{STYLE}set output "{FOLDER / name}"\n{settings}\nplot {parts}\n{data}'
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def sections(bench, name):
    """The level of each section of this name, and its entries."""
    for key, entries in bench.items():
        if key.startswith(name + ", "):
            yield key.split(", ")[1], entries


def size_curves(bench):
    for level, entries in sections(bench, "sizes"):
        for name in ("read soon", "read later"):
            yield f"{level}, {name}", [
                (entry["frame"].removesuffix("MP"), entry["time"]["minimum"])
                for entry in entries if entry["name"] == name
            ]


def thread_curves(bench):
    for level, entries in sections(bench, "threads"):
        for frame in dict.fromkeys(entry["frame"] for entry in entries):
            times = {
                int((re.findall(r"team of (\d+)", entry["name"]) or ["1"])[0]):
                    entry["time"]["minimum"]
                for entry in entries
                if entry["frame"] == frame and "OpenCV" not in entry["name"]
            }
            yield f"{level}, {frame}", [(n, 1 / time) for n, time in sorted(times.items())]


def main():
    bench = json.loads(pathlib.Path(sys.argv[1]).read_text())
    plot("sizes.svg", 'set logscale x\nset xtics (0.3, 1, 2, 5, 12, 24, 50, 100)\nset yrange [0:]\n'
         'set xlabel "megapixels"\nset ylabel "ns per pixel"', list(size_curves(bench)))
    plot("threads.svg", 'set xtics 1\nset yrange [0:]\n'
         'set xlabel "threads"\nset ylabel "pixels per ns"', list(thread_curves(bench)))


if __name__ == "__main__":
    main()
