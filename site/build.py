#!/usr/bin/python3
"""build.py BUILD TARGET: builds the site from a release build, warnings being errors.

The pages are the Markdown pages of the project where they stand, those of site/pages, and what
the modules beside this one write: reference pages from headers, the program and the element.
"""

import os
import pathlib
import shutil
import subprocess
import sys

import element
import examples
import headers
import javascript
import manual
import measurements
import names
import theme

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ("README.md", "CHANGELOG.md", "CONTRIBUTING.md", "SECURITY.md", "tests/regressions", "docs")


def gather(tree):
    """Makes a folder with all pages, as links to where they stand."""
    tree.mkdir(parents=True)
    for page in PAGES:
        (tree / page).parent.mkdir(exist_ok=True)
        (tree / page).symlink_to(ROOT / page)
    for page in (ROOT / "site" / "pages").rglob("*.*"):
        link = tree / page.relative_to(ROOT / "site" / "pages")
        link.parent.mkdir(exist_ok=True)
        link.symlink_to(page)


def run(*command, **variables):
    subprocess.run(command, check=True, env={**os.environ, **variables})


def main(build, target):
    work = build / "site"
    tree = work / "pages"
    shutil.rmtree(work, ignore_errors=True)
    shutil.rmtree(target, ignore_errors=True)
    gather(tree)
    (work / "doxygen").mkdir()
    run("doxygen", ROOT / "site" / "Doxyfile", VISTREL_ROOT=str(ROOT),
        VISTREL_DOXYGEN=str(work / "doxygen"))
    for module in (element, examples, headers, javascript, manual, measurements, names):
        for name, text in module.pages(ROOT, build).items():
            page = tree / "reference" / name
            page.parent.mkdir(parents=True, exist_ok=True)
            page.write_text(text, encoding="utf-8")
    run("/usr/bin/python3", "-m", "sphinx", "-q", "-W", "--keep-going", "-n", "-c", ROOT / "site",
        "-d", work / "doctrees", tree, target, VISTREL_SITE=str(work))
    theme.mend(target / "_static")


if __name__ == "__main__":
    try:
        main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve())
    except subprocess.CalledProcessError as error:
        sys.exit(f"{error}\n{(error.stderr or b'').decode()}")
