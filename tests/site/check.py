"""check.py SITE ROOT BUILD: the built pages have no broken link, ask no other host for anything,
and describe every public name of the library, the package, the modules and the program.
"""

import inspect
import pathlib
import re
import subprocess
import sys

from pages import is_elsewhere, page, pages, styles, target_of


def broken_links(site):
    for name, found in pages(site).items():
        for url in found.links + found.loaded:
            if is_elsewhere(url) or url.startswith("data:") or "try/index.html" in url:
                continue
            target, anchor = target_of(site / name, url)
            if not target.is_file():
                yield f"{name}: no file for {url}"
            elif anchor and target.suffix == ".html" and anchor not in page(target).ids:
                yield f"{name}: no anchor for {url}"


def requests_elsewhere(site):
    for name, found in pages(site).items():
        yield from (f"{name} loads {url}" for url in found.loaded if is_elsewhere(url))
    for sheet, url in styles(site):
        if is_elsewhere(url) or url.startswith("/"):
            yield f"{sheet.name} loads {url}"


def unreachable(site, root):
    menu = page(site / "index.html").menu
    for path in (root / "docs").glob("*.md"):
        if f"docs/{path.stem}.html" not in menu:
            yield f"the navigation has no docs/{path.name}"


def names_of_headers(root):
    """Exported functions and variables; enumerators and macros; the inline functions of C++."""
    for exports in ("cmake/exports.txt", "host/exports.txt"):
        for line in (root / exports).read_text().splitlines():
            if line and line[0] != "#":
                yield re.match(r"(?:.* )?(\w+)", line.split("(")[0])[1]
    for path in (root / "include" / "vistrel").iterdir():
        hidden = r"namespace detail \{.*?\}  // namespace detail|//[^\n]*|/\*.*?\*/"
        text = re.sub(hidden, "", path.read_text(), flags=re.S)
        yield from re.findall(r"\b([A-Z][A-Z0-9_]{3,}) = \w", text)
        yield from re.findall(r"^#define (\w+) ", text, re.M)
        if path.suffix == ".hpp":
            yield from re.findall(r"^inline (?!namespace)[^(;={]*?(\w+)\(", text, re.M)
            yield from re.findall(r"^(?:class|struct)(?: \[\[\w+\]\])? (\w+)", text, re.M)


def names_of_python():
    import vistrel
    import vistrel.dask
    for module in (vistrel, vistrel.dask):
        for name in module.__all__:
            thing = getattr(module, name)
            yield name, thing
            if isinstance(thing, type) and not issubclass(thing, (str, int, tuple, Exception)):
                yield from ((part, method) for part, method in vars(thing).items()
                            if callable(method) and part[0] != "_")


def bare_parameters():
    """Parameters without a description."""
    for name, thing in names_of_python():
        if inspect.isfunction(thing):
            words = re.findall(r"\w+", inspect.getdoc(thing) or "")
            for parameter in inspect.signature(thing).parameters:
                if parameter != "self" and parameter not in words:
                    yield f"Python: {name} doesn't describe {parameter}"


def options_of(vistrel):
    """The commands with the options that their --help lists."""
    listed = subprocess.check_output([vistrel, "--help"], text=True)
    for command in re.findall(r"^  ([a-z]+)  +\S", listed, re.M):
        text = subprocess.check_output([vistrel, command, "--help"], text=True)
        yield command, re.findall(r"^  (?:-\w,)?(--[a-z0-9-]+)", text, re.M)


def options_in_sources(root):
    """All, those for rare needs too."""
    for path in (root / "apps").rglob("*.cpp"):
        yield from re.findall(r'"(?:-\w,)?(--[a-z][a-z-]+)"', path.read_text())


def missing_names(site, root):
    found = pages(site)
    defined = set().union(*(one.defined for one in found.values()))
    wanted = {name: "a header" for name in names_of_headers(root)}
    wanted |= {name: "Python" for name, _ in names_of_python()}
    script = (root / "wasm" / "vistrel.mjs").read_text()
    of_script = r"^export .*?(\w+)(?:\(| extends)|^  (?!constructor)(?:get )?([a-z]\w*)\([^;]*\{$"
    api = script[:script.index("\nclass Scratch")] + script[script.index("\nclass Vistrel"):]
    wanted |= {a or b: "JavaScript" for a, b in re.findall(of_script, api, re.M)}
    if len(wanted) < 300:
        yield f"only {len(wanted)} public names found"
    yield from (f"no page describes {name} of {where}" for name, where in wanted.items()
                if name not in defined)


def missing_options(site, root, build):
    everywhere = "".join(found.text for name, found in pages(site).items() if "manual/" in name)
    options = set(options_in_sources(root))
    if len(options) < 40:
        yield f"only these options found: {options}"
    yield from (f"no man page has {name}" for name in options if name not in everywhere)
    for command, options in options_of(build / "apps" / "vistrel"):
        text = page(site / "reference" / "manual" / f"vistrel-{command}.html").text
        yield from (f"the page of {command} has no {name}" for name in options if name not in text)


def main(site, root, build):
    sys.path.insert(0, str(build / "python"))
    faults = [*broken_links(site), *requests_elsewhere(site), *unreachable(site, root),
              *missing_names(site, root), *bare_parameters(), *missing_options(site, root, build)]
    print("\n".join(faults) or f"{len(pages(site))} pages are complete")
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:])))
