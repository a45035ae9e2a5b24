#!/usr/bin/env python3
"""adding_an_algorithm.py ROOT SCRATCH CMAKE CXX: makes the edits of docs/adding-an-algorithm.md on
a copy of the sources and checks the result. With VISTREL_BUILD_TOY=1 in the environment it also
builds the program and the harness and runs the toy in both."""
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

ROOT, SCRATCH = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
CMAKE, CXX = sys.argv[3:]
TREE, BUILD = SCRATCH / "tree", SCRATCH / "build"
PAGE = "docs/adding-an-algorithm.md"


def run(*command):
    """What the command prints. Exits if it fails."""
    done = subprocess.run([str(c) for c in command], cwd=TREE, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def must_contain(text, expected):
    if expected not in text:
        sys.exit(f"expected {expected!r} in:\n{text}")


def copy_tree():
    shutil.rmtree(TREE, ignore_errors=True)
    shutil.copytree(ROOT, TREE, ignore=shutil.ignore_patterns("build", ".git"))


def edit(name, block):
    """Replaces the lines of a block without + by those without -, wherever they occur."""
    path, lines = TREE / name, block.splitlines(keepends=True)
    old = "".join(line[1:] for line in lines if not line.startswith("+"))
    new = "".join(line[1:] for line in lines if not line.startswith("-"))
    text = path.read_text()
    if old not in text:
        sys.exit(f"{PAGE}: {name} has no such lines:\n{old}")
    path.write_text(text.replace(old, new))


def make_edits():
    """Makes the edits of the page; returns the names of the files."""
    names, name = [], ""
    parts = r"^(?:[^\n]*\b(?:New file|In) `([^`]+)`[^\n]*|```(\w*)\n(.*?)```)$"
    for part in re.finditer(parts, (ROOT / PAGE).read_text(), re.M | re.S):
        named, language, block = part.groups()
        if named:
            name = named
        elif language == "cpp":
            (TREE / name).write_text(block)
        elif language == "diff":
            edit(name, block)
        if language in ("cpp", "diff"):
            names.append(name)
    if len(names) < 20:
        sys.exit(f"{PAGE} has only {len(names)} edits")
    return sorted(set(names))


def check_sources(names):
    sources = [name for name in names if name.endswith((".h", ".cpp"))]
    if shutil.which("clang-format-14"):
        run("clang-format-14", "--dry-run", "-Werror", *sources)
    for rule in ("includes", "quirks"):
        run(CMAKE, "-D", f"ROOT={TREE}", "-P", f"tests/lint/{rule}.cmake")
    run(CMAKE, "-D", "HEADER=include/vistrel/vistrel.h", "-D", "PAGE=README.md",
        "-D", "LINES=^ *DM_[A-Z0-9_]+ = ", "-D", "NAME=[A-Z0-9_]+", "-P", "tests/lint/names.cmake")
    for name in names:
        if name.endswith(".cpp"):
            run(CXX, "-std=c++20", "-Wall", "-Wextra", "-Wno-psabi", "-Werror", "-fsyntax-only",
                "-DVISTREL_KEEP_CALLS", "-I.", "-Iinclude", name)


def build_and_run():
    run(CMAKE, "-S", TREE, "-B", BUILD, "-G", "Ninja", "-D", "CMAKE_BUILD_TYPE=Debug",
        "-D", "CMAKE_CXX_FLAGS_DEBUG=-O1")
    run(CMAKE, "--build", BUILD, "--target", "vistrel", "vistrel-check")
    vistrel, check = BUILD / "apps/vistrel", BUILD / "tests/check/vistrel-check"
    frame, options = SCRATCH / "frame.pgm", ("--phase", "rggb", "--bits", "12")
    run(vistrel, "scene", "-s", "96x64", *options, "-o", frame)
    run(vistrel, "convert", frame, *options, "-a", "toy", "-o", SCRATCH / "toy.png")
    run(vistrel, "compare", frame, *options, "-a", "toy", "-o", SCRATCH / "sheet.png")
    must_contain(run(vistrel, "convert", "--help"), "toy")
    must_contain(run(check, "--group", "demosaic", "--list"), "toy-16")
    must_contain(run(check, "--filter", "toy", "--cases", "300"), "ok toy-16")


copy_tree()
edited = make_edits()
check_sources(edited)
if os.environ.get("VISTREL_BUILD_TOY"):
    build_and_run()
print(f"{len(edited)} files edited")
