"""The algorithms with what was measured, and a picture by each; the runs behind the proof."""

import json
import subprocess

from tables import code, table

ALGORITHMS = """# Algorithms

What each algorithm is for, how close its pictures come to their originals (CPSNR, in decibels:
higher is closer), and how long it takes. The [man page](manual/vistrel-algorithms.md) says of which
frames.
[Choosing](/docs/choosing.md) helps to decide; [quality](/docs/quality.md) and
[performance](/docs/performance.md) have all measurements.

{table}
## One crop by each

The same place of the test scene, enlarged three times. All algorithms see the same samples:

"""
CROP = "230x110+180+260"
PROOF = """# Runs behind the proof

[Proof](/docs/proof.md) has a row for each promise, and what has been done. These are the commands
of one run: `{{build}}` is the folder of a build, `{{amount}}` how much is done, `{{seed}}` a new
number for each run.

{rows}"""


def algorithm(entry):
    size = entry["min_size"]
    return [code(entry["name"]), f"8 to {entry['max_bits']}", f"{size}x{size}",
            f"{entry['cpsnr_db']:.2f}", f"{entry['ns_per_pixel']:.3f}", entry["use"]]


def algorithms(build):
    vistrel, folder = build / "apps" / "vistrel", build / "site" / "pages" / "reference" / "crops"
    folder.mkdir(parents=True)
    entries = json.loads(subprocess.check_output([vistrel, "algorithms", "--json"]))
    scene = folder / "scene.pgm"
    subprocess.run([vistrel, "scene", "-o", scene], check=True, capture_output=True)
    pictures = ""
    for entry in entries:
        name = entry["name"]
        subprocess.run([vistrel, "compare", scene, "--phase", "rggb", "--crop", CROP, "-a", name,
                        "-o", folder / f"{name}.png"], check=True, capture_output=True)
        pictures += f"![The crop by {name}](crops/{name}.png)\n"
    heads = ["Algorithm", "Bits", "From", "CPSNR", "ns/pixel", "For"]
    return ALGORITHMS.format(table=table(heads, map(algorithm, entries))) + pictures


def proof(root):
    rows = json.loads((root / "proof" / "rows.json").read_text())
    lines = ([name, f"{row['goal']:,} {row['unit']}", f"{row['run']:,}", code(row["command"])]
             for name, row in rows.items() if "command" in row)
    return PROOF.format(rows=table(["Row", "Goal", "One run", "Command"], lines))


def pages(root, build):
    return {"algorithms.md": algorithms(build), "proof-runs.md": proof(root)}
