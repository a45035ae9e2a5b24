#!/usr/bin/env python3
"""adding_an_algorithm.py ROOT SCRATCH BUILT HOST_LIBRARY CXX CMAKE OPTION...: makes the edits of
docs/adding-an-algorithm.md and docs/testing-an-algorithm.md on a copy of the sources and checks
them, configures the copy with the options, compiles what the pages edit, links it with the other objects of the build in BUILT,
and runs the toy in the harness and in that build's program."""
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

ROOT, SCRATCH, BUILT = (Path(argument).resolve() for argument in sys.argv[1:4])
HOST_LIBRARY, CXX, *CONFIGURE = sys.argv[4:]
CMAKE = CONFIGURE[0]
TREE, BUILD = SCRATCH / "tree", SCRATCH / "build"
PAGES = "docs/adding-an-algorithm.md", "docs/testing-an-algorithm.md"
TARGETS = "vistrel_objects", "vistrelhost", "vistrel_reference", "vistrel-check"


def run(*command, cwd=TREE, **environment):
    """What the command prints. Exits if it fails."""
    done = subprocess.run([str(c) for c in command], cwd=cwd, env=os.environ | environment,
                          text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def must_contain(text, expected):
    if expected not in text:
        sys.exit(f"expected {expected!r} in:\n{text}")


def copy_tree():
    shutil.rmtree(TREE, ignore_errors=True)
    shutil.copytree(ROOT, TREE, ignore=shutil.ignore_patterns("build", ".git"))


def edit(page, name, block):
    """Replaces the lines of a block without + by those without -, wherever they occur."""
    path, lines = TREE / name, block.splitlines(keepends=True)
    old = "".join(line[1:] for line in lines if not line.startswith("+"))
    new = "".join(line[1:] for line in lines if not line.startswith("-"))
    text = path.read_text()
    if old not in text:
        sys.exit(f"{page}: {name} has no such lines:\n{old}")
    path.write_text(text.replace(old, new))


def make_edits(page):
    """Makes the edits of a page; returns the names of the files, one for each edit."""
    names, name = [], ""
    parts = r"^(?:[^\n]*\b(?:New file|In) `([^`]+)`[^\n]*|```(\w*)\n(.*?)```)$"
    for part in re.finditer(parts, (ROOT / page).read_text(), re.M | re.S):
        named, language, block = part.groups()
        if named:
            name = named
        elif language == "cpp":
            (TREE / name).write_text(block)
        elif language == "diff":
            edit(page, name, block)
        if language in ("cpp", "diff"):
            names.append(name)
    if len(names) < 10:
        sys.exit(f"{page} has only {len(names)} edits")
    return names


def check_sources(names):
    sources = [name for name in names if name.endswith((".h", ".cpp"))]
    if shutil.which("clang-format-14"):
        run("clang-format-14", "--dry-run", "-Werror", *sources)
    for rule in ("includes", "quirks"):
        run(CMAKE, "-D", f"ROOT={TREE}", "-P", f"tests/lint/{rule}.cmake")
    run(CMAKE, "-D", "FOLDER=include/vistrel", "-D", "HEADERS=vistrel.h", "-D", "PAGE=README.md",
        "-D", "LINES=^ *DM_[A-Z0-9_]+ = ", "-D", "NAME=[A-Z0-9_]+", "-P", "tests/lint/names.cmake")
    for name in names:
        if name.endswith("_test.cpp"):
            run(CXX, "-std=c++20", "-Wall", "-Wextra", "-Wno-psabi", "-Werror", "-fsyntax-only",
                "-I.", "-Iinclude", name)


def included_by(source):
    """The headers that a source includes, directly or not."""
    found, unread = set(), [TREE / source]
    for path in unread:
        names = re.findall(r'#include "([^"]+)"', path.read_text())
        unread += [TREE / name for name in names if name not in found and (TREE / name).exists()]
        found.update(names)
    return found


def compile_edited(names):
    """The objects of each target: new ones of sources that are edited or include edited headers
    other than the public ones, otherwise those in BUILT."""
    objects, edited = defaultdict(list), set(names)
    run(*CONFIGURE, "-S", TREE, "-B", BUILD)
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        command = shlex.split(entry["command"])
        compiled = command[command.index("-o") + 1]
        target = re.search(r"([^/]+)\.dir/", compiled)[1]
        if target not in TARGETS:
            continue
        source = os.path.relpath(entry["file"], TREE)
        if source in edited or included_by(source) & edited:
            (BUILD / compiled).parent.mkdir(parents=True, exist_ok=True)
            run(*command, "-O1", cwd=BUILD)
            objects[target].append(BUILD / compiled)
        else:
            objects[target].append(BUILT / compiled)
    return objects


def build_and_run(names):
    objects = compile_edited(names)
    host, check = BUILD / HOST_LIBRARY, BUILD / "vistrel-check"
    run(CXX, "-shared", "-o", host, *objects["vistrelhost"], *objects["vistrel_objects"], "-lfmt")
    run(CXX, "-o", check, *objects["vistrel-check"], *objects["vistrel_reference"],
        *objects["vistrel_objects"], host, "-lfmt")
    must_contain(run(check, "--group", "demosaic", "--list"), "toy-16")
    must_contain(run(check, "--filter", "toy", "--cases", "300"), "ok toy-16")
    must_contain(run(check, "--filter", "engine-alone", "--cases", "300"), "ok engine-alone")

    def vistrel(*arguments):
        return run(BUILT / "apps/vistrel", *arguments, LD_LIBRARY_PATH=str(BUILD))
    frame, options = SCRATCH / "frame.pgm", ("--phase", "rggb", "--bits", "12")
    vistrel("scene", "-s", "96x64", *options, "-o", frame)
    pictures = [SCRATCH / f"{name}.png" for name in ("toy", "ahd", "bilinear")]
    for picture in pictures:
        vistrel("convert", frame, *options, "-a", picture.stem, "-o", picture)
    if len({picture.read_bytes() for picture in pictures}) < len(pictures):
        sys.exit("another algorithm converts in the toy's place")
    vistrel("compare", frame, *options, "-a", "toy", "-o", SCRATCH / "sheet.png")
    must_contain(vistrel("algorithms"), "toy")
    run(BUILT / "apps/tools/manual/vistrel_manual", SCRATCH / "manual", "2000-01-01",
        LD_LIBRARY_PATH=str(BUILD))
    must_contain((SCRATCH / "manual/man1/vistrel-convert.1").read_text(), "toy")


copy_tree()
edited = sorted({name for page in PAGES for name in make_edits(page)})
check_sources(edited)
build_and_run(edited)
print(f"{len(edited)} files edited")
