#!/usr/bin/env python3
"""make-curves.py VISTREL: plots the tone curves that --curve takes by name, with gnuplot.

The program VISTREL converts a ramp of 1024 samples by each curve. The plot is curves.svg beside this
script.
"""

import pathlib
import subprocess
import sys
import tempfile

FOLDER = pathlib.Path(__file__).parent
COLOURS = {"lightest": "#0072b2", "lighter": "#56b4e9", "light": "#009e73", "contrast": "#d55e00",
           "dark": "#333333"}
SETTINGS = f"""
set terminal svg size 640,420 font "sans-serif,13" background rgb "white"
set output "{FOLDER / 'curves.svg'}"
set grid lc rgb "#dddddd"
set border 3
set tics nomirror
set key outside right top vertical
set xlabel "sample of 10 bits"
set ylabel "value of 8 bits"
set xrange [0:1023]
set yrange [0:255]
set xtics 0,128,1023 add ("1023" 1023)
set ytics 0,32,255 add ("255" 255)
"""


def values(vistrel, *options):
    """The values that the samples 0 to 1023 become."""
    ramp = b"P5 1024 1 1023\n" + b"".join(v.to_bytes(2, "big") for v in range(1024))
    with tempfile.NamedTemporaryFile(suffix=".pgm") as frame:
        frame.write(ramp)
        frame.flush()
        result = subprocess.run([vistrel, "convert", frame.name, "--phase", "mono", *options,
                                 "-o", "pgm:-"], check=True, capture_output=True).stdout
    return result[-1024:]


def main(vistrel):
    curves = [(name, f"lw 2 lc rgb '{colour}'", values(vistrel, "--curve", name))
              for name, colour in COLOURS.items()]
    curves.append(("no curve", "lw 1 dt 2 lc rgb '#888888'", values(vistrel)))
    plots = (f'"-" title "{name}" with lines {style}' for name, style, _ in curves)
    data = ("".join(f"{x} {points[x]}\n" for x in range(0, 1024, 3)) + "e\n" for _, _, points in curves)
    script = SETTINGS + "plot " + ", ".join(plots) + "\n" + "".join(data)
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


if __name__ == "__main__":
    main(sys.argv[1])
