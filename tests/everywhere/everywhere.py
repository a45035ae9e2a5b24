#!/usr/bin/env python3
"""Builds the libraries and the selftest for other machines, by each compiler and optimisation, and
runs the selftest there, in an emulator. Its hashes come from the reference, and those of samples of
16 bits don't depend on the byte order: so all builds must give the same pixels.

Writes a row for each build to the log; rows of other builds stay. --table makes the page of it.
"""

import argparse
import datetime
import json
import os
import pathlib
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
LOG = ROOT / "docs/everywhere.json"
PAGE = ROOT / "docs/everywhere.md"

MACHINES = {
    "x86-64": "x86_64-linux-gnu",
    "i386": "i686-linux-gnu",
    "AArch64": "aarch64-linux-gnu",
    "armhf": "arm-linux-gnueabihf",
    "riscv64": "riscv64-linux-gnu",
    "s390x": "s390x-linux-gnu",
    "Windows": "x86_64-w64-mingw32",
}
COMPILERS = ["gcc", "clang-14"]
OPTIMISATIONS = ["O0", "O2", "O3"]
# Debian has no C++ library of MinGW for clang; one build is enough to show that Windows agrees.
WINDOWS = [("gcc", "O3")]


def output_of(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=True, **options).stdout


def version_of(command):
    return re.search(r"\d+\.\d+(\.\d+)?", output_of(command, "--version")).group()


def emulator_of(machine):
    """The emulator's command and what the table calls it; nothing for this machine's own programs."""
    triplet = MACHINES[machine]
    if machine == "x86-64":
        return [], "none"
    if machine == "Windows":
        return ["wine"], "wine " + version_of("wine")
    qemu = "qemu-" + {"i686": "i386"}.get(triplet.split("-")[0], triplet.split("-")[0])
    return [qemu, "-L", "/usr/" + triplet], f"{qemu} {version_of(qemu)}"


def compiler_of(machine, compiler):
    if compiler == "gcc":
        suffix = "-posix" if machine == "Windows" else ""
        return "g++ " + version_of(f"{MACHINES[machine]}-g++{suffix}")
    return "clang " + version_of(compiler)


def build(machine, compiler, optimisation, targets):
    folder = ROOT / f"build/everywhere/{machine}-{compiler}-{optimisation}"
    options = {
        "CMAKE_TOOLCHAIN_FILE": ROOT / "cmake/machine.cmake",
        "CMAKE_BUILD_TYPE": "Release",
        "CMAKE_UNITY_BUILD": "ON",
        "CMAKE_CXX_FLAGS_RELEASE": f"-{optimisation} -DNDEBUG",
        "VISTREL_MACHINE": MACHINES[machine],
        "VISTREL_COMPILER": compiler,
        "VISTREL_OPTIMIZATION": f"-{optimisation}",
        "BUILD_SHARED_LIBS": "OFF",
        "VISTREL_APPS": "OFF",
        "VISTREL_TESTS": "OFF",
        "VISTREL_EVERYWHERE": "ON",
    }
    definitions = [f"-D{name}={value}" for name, value in options.items()]
    output_of("cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", *definitions)
    output_of("cmake", "--build", folder, "--parallel", str(os.cpu_count()), "--target", *targets)
    return folder / "tests/everywhere"


def run(machine, program, *arguments):
    """The last line that the program prints, and whether it succeeded."""
    emulator, _ = emulator_of(machine)
    if machine == "Windows":
        program = program.with_suffix(".exe")
    environment = dict(os.environ, WINEDEBUG="-all", WINEPREFIX=str(ROOT / "build/everywhere/wine"))
    done = subprocess.run([*emulator, program, *arguments], capture_output=True, text=True,
                          env=environment, check=False)
    lines = (done.stdout.strip() or done.stderr.strip() or f"ended by {done.returncode}").splitlines()
    return lines[-1], done.returncode == 0


def measure(machine, compiler, optimisation, cases):
    """A row of the log."""
    start = time.monotonic()
    row = {
        "machine": machine,
        "compiler": compiler_of(machine, compiler),
        "optimisation": optimisation,
        "emulator": emulator_of(machine)[1],
        "date": datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d %H:%M"),
        "commit": output_of("git", "-C", ROOT, "rev-parse", "--short", "HEAD").strip(),
        "command": f"./dev everywhere --machine {machine} --compiler {compiler} "
                   f"--optimisation {optimisation}" + (f" --cases {cases}" if cases else ""),
    }
    try:
        folder = build(machine, compiler, optimisation,
                       ["vistrel-selftest"] + (["vistrel-check"] if cases else []))
        row["selftest"], row["ok"] = run(machine, folder / "vistrel-selftest")
        if cases:
            checked, ok = run(machine, folder / "check/vistrel-check", "--cases", str(cases))
            row["check"] = f"{cases} cases of each function" if ok else checked
            row["ok"] = row["ok"] and ok
    except subprocess.CalledProcessError as error:
        log = (error.stdout or "") + (error.stderr or "")
        fault = re.search(r".*error.*", log)
        row["selftest"], row["ok"] = fault.group() if fault else log[-300:], False
    row["seconds"] = round(time.monotonic() - start)
    return row


def key(row):
    return (list(MACHINES).index(row["machine"]), row["compiler"].split()[0] != "g++",
            row["optimisation"])


def store(row):
    rows = {key(old): old for old in json.loads(LOG.read_text())} if LOG.exists() else {}
    if old := rows.get(key(row)):
        row = {**({"check": old["check"]} if "check" in old else {}), **row}
    rows[key(row)] = row
    LOG.write_text(json.dumps([rows[k] for k in sorted(rows)], indent=2) + "\n")


def write_table():
    rows = json.loads(LOG.read_text())
    good = sum(row["ok"] for row in rows)
    lines = (pathlib.Path(__file__).parent / "page.md").read_text().format(
        builds=len(rows), good=good, first=min(r["date"] for r in rows)[:10],
        last=max(r["date"] for r in rows)[:10]).splitlines()
    lines += ["", "| Machine | Compiler | Optimisation | Emulator | Selftest | vistrel-check | Commit |",
              "|---|---|---|---|---|---|---|"]
    for row in rows:
        selftest = row["selftest"] if row["ok"] else "**" + row["selftest"] + "**"
        lines.append("| " + " | ".join([row["machine"], row["compiler"], "-" + row["optimisation"],
                                        row["emulator"], selftest.replace("|", "\\|"),
                                        row.get("check", ""), row["commit"]]) + " |")
    PAGE.write_text("\n".join(lines) + "\n")


def chosen(options):
    for machine in options.machine:
        for optimisation in options.optimisation:
            for compiler in options.compiler:
                if machine != "Windows" or (compiler, optimisation) in WINDOWS:
                    yield machine, compiler, optimisation


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--machine", nargs="+", choices=MACHINES, default=list(MACHINES))
    parser.add_argument("--compiler", nargs="+", choices=COMPILERS, default=COMPILERS)
    parser.add_argument("--optimisation", nargs="+", choices=OPTIMISATIONS, default=OPTIMISATIONS)
    parser.add_argument("--cases", type=int, default=0,
                        help="run vistrel-check too, with so many cases of each function")
    parser.add_argument("--no-log", action="store_true", help="write nothing to docs/")
    options = parser.parse_args()
    failed = 0
    for build_options in chosen(options):
        row = measure(*build_options, options.cases)
        print(*build_options, f"{row['seconds']} s:", row["selftest"], row.get("check", ""),
              flush=True)
        failed += not row["ok"]
        if not options.no_log:
            store(row)
            write_table()
    sys.exit(failed > 0)


if __name__ == "__main__":
    main()
