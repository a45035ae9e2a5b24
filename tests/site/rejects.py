"""rejects.py SITE ROOT BUILD: proves that check.py notices what can be wrong with built pages."""

import pathlib
import shutil
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).with_name("check.py")
SITE, ROOT, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])


def replace(name, old, new):
    def change(site):
        path = site / name
        text = path.read_text()
        if old not in text:
            sys.exit(f"{name} has no {old}")
        path.write_text(text.replace(old, new))
    return change


def remove(name):
    return lambda site: (site / name).unlink()


FAULTS = {
    "no file for ../SECURITY.html": remove("SECURITY.html"),
    "no anchor for program.html#developing": replace("docs/program.html", 'id="developing"', ""),
    "loads https://example.org/x.js": replace(
        "index.html", "</body>", '<script src="https://example.org/x.js"></script></body>'),
    "loads //example.org/x.woff": replace(
        "_static/site.css", "/* Plots", "a { src: url(//example.org/x.woff) } /* Plots"),
    "the navigation has no docs/quirks.md": replace(
        "index.html", "docs/quirks.html", "README.html"),
    "no page describes vistrel_unpack": replace("reference/headers/vistrel_host.h.html",
                                                ">vistrel_unpack<", "><"),
    "no page describes decide_look": replace("reference/python.html", ">decide_look<", "><"),
    "no page describes loadVistrel": replace("reference/javascript.html", ">loadVistrel<", "><"),
    "the page of convert has no --bin": replace(
        "reference/manual/vistrel-convert.html", "--bin", ""),
}


def faults_of(site):
    return subprocess.run([sys.executable, CHECK, site, ROOT, BUILD], text=True, check=False,
                          capture_output=True).stdout


with tempfile.TemporaryDirectory() as folder:
    copy = pathlib.Path(folder) / "site"
    shutil.copytree(SITE, copy)
    for fault, change in FAULTS.items():
        change(copy)
    found = faults_of(copy)
missed = [fault for fault in FAULTS if fault not in found]
sys.exit(f"not noticed: {missed} in\n{found[:4000]}" if missed else 0)
