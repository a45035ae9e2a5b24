#!/usr/bin/env python3
"""measure-algorithms.py VISTREL: how well each algorithm keeps the places of edges and the light of
stars, measured with the program VISTREL. It prints the two tables of docs/choosing.md.

Edges are straight, blurred by a Gaussian of 0.7 pixels, in four directions; their place in a row is
where green crosses the middle. Stars are Gaussians of 1.1 pixels. All start as pictures of 8 bits,
which `vistrel mosaic` samples in two phases.
"""

import math
import pathlib
import subprocess
import sys
import tempfile

SIZE, MIDDLE = 160, 79.3
ALGORITHMS = "directional ahd edge vng laroche kimmel cok hamilton near grouping bilinear".split()
GRAY = (40, 40, 40), (200, 200, 200)
COLOURED = (60, 120, 40), (200, 150, 90)
STARS = [(16 + 21 * i + (7 * i + 3 * j) % 10 / 10, 16 + 21 * j + (i + 7 * j) % 10 / 10)
         for i in range(7) for j in range(7)]


def demosaiced(vistrel, pixel, phase, algorithm):
    """The picture that the algorithm makes of pixel(x, y), as rows of (red, green, blue)."""
    with tempfile.TemporaryDirectory() as folder:
        picture, frame = pathlib.Path(folder, "picture.ppm"), pathlib.Path(folder, "frame.pgm")
        samples = bytes(round(v) for y in range(SIZE) for x in range(SIZE) for v in pixel(x, y))
        picture.write_bytes(b"P6 %d %d 255\n" % (SIZE, SIZE) + samples)
        subprocess.run([vistrel, "mosaic", picture, "-o", frame, "--phase", phase], check=True)
        result = subprocess.run([vistrel, "convert", frame, "--phase", phase, "-a", algorithm,
                                 "-o", "ppm:-"], check=True, capture_output=True).stdout
    samples = result[-3 * SIZE * SIZE:]
    pixels = [tuple(samples[i:i + 3]) for i in range(0, len(samples), 3)]
    return [pixels[i:i + SIZE] for i in range(0, len(pixels), SIZE)]


def root_mean_square(values):
    return math.sqrt(sum(v * v for v in values) / len(values))


def edge_errors(vistrel, algorithm, colours, degrees, phase):
    """The distances, in pixels, of the edge found in each row from its true place."""
    cos, sin = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))

    def pixel(x, y):
        distance = (x - MIDDLE) * cos + (y - MIDDLE) * sin
        share = (1 + math.erf(distance / (0.7 * math.sqrt(2)))) / 2
        return [a + (b - a) * share for a, b in zip(*colours)]

    rows = demosaiced(vistrel, pixel, phase, algorithm)
    middle = (colours[0][1] + colours[1][1]) / 2
    for y in range(20, SIZE - 20):
        place = MIDDLE - (y - MIDDLE) * sin / cos
        if not 20 < place < SIZE - 20:
            continue
        green = [p[1] for p in rows[y]]
        crossings = [x + (middle - green[x]) / (green[x + 1] - green[x])
                     for x in range(SIZE - 1) if green[x] < middle <= green[x + 1]]
        yield min(abs(x - place) for x in crossings)


def star_errors(vistrel, algorithm, phase):
    """Of each star: the distance of its centre in green, and the relative errors of its light in
    red, green and blue."""
    def light(x, y):
        return sum(180 * math.exp(-((x - a) ** 2 + (y - b) ** 2) / (2 * 1.1 ** 2))
                   for a, b in STARS if abs(x - a) < 8 and abs(y - b) < 8)

    rows = demosaiced(vistrel, lambda x, y: [8 + light(x, y)] * 3, phase, algorithm)
    for a, b in STARS:
        near = [(x, y) for y in range(int(b) - 7, int(b) + 9) for x in range(int(a) - 7, int(a) + 9)]
        true = sum(light(x, y) for x, y in near)
        sums = [sum(rows[y][x][c] - 8 for x, y in near) for c in range(3)]
        green = sum(rows[y][x][1] - 8 for x, y in near)
        centre = [sum(p[i] * (rows[p[1]][p[0]][1] - 8) for p in near) / green for i in (0, 1)]
        yield math.dist(centre, (a, b)), [s / true - 1 for s in sums]


def edges_of(vistrel, algorithm, colours):
    return [error for degrees in (0, 5, 20, 40) for phase in ("rggb", "gbrg")
            for error in edge_errors(vistrel, algorithm, colours, degrees, phase)]


def main(vistrel):
    print("| Algorithm | gray edge | coloured edge | star, place | star, light |\n|---|---|---|---|---|")
    for algorithm in ALGORITHMS:
        gray, coloured = (edges_of(vistrel, algorithm, c) for c in (GRAY, COLOURED))
        stars = [s for phase in ("rggb", "gbrg") for s in star_errors(vistrel, algorithm, phase)]
        light = [error for _, errors in stars for error in errors]
        print(f"| `{algorithm}` | {root_mean_square(gray):.3f} | {root_mean_square(coloured):.3f} |"
              f" {root_mean_square([d for d, _ in stars]):.3f} |"
              f" {100 * root_mean_square(light):.1f} % |")


if __name__ == "__main__":
    main(sys.argv[1])
