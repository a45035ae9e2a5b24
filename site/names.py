"""The names of phases and formats in all conventions, as `vistrel formats --json` prints them."""

import json
import subprocess

from tables import code, table

INTRODUCTION = """# Names

What the program, libvistrelhost and others call phases and formats. `vistrel formats` prints
these tables, `vistrel formats NAME` the row of one name, and `--pixfmt` takes any name of the raw
formats. The [man page](manual/vistrel-formats.md) says what the columns are.
"""


def words(key):
    return key.replace("_", " ")


def shown(value):
    """In one line: spaces don't break."""
    text = ", ".join(map(str, value)) if isinstance(value, list) else value
    return code(text.replace(" ", "\u00a0") if isinstance(text, str) else text)


def rows(entries):
    """A table of objects with the same keys, without columns that are empty throughout."""
    keys = [key for key in entries[0] if any(entry.get(key) is not None for entry in entries)]
    return table(map(words, keys), ([shown(entry.get(key)) for key in keys] for entry in entries))


def grouped(entries):
    """Raw formats by their packing, which then needs no column."""
    groups = {}
    for entry in entries:
        groups.setdefault(entry["packing"], []).append(
            {key: value for key, value in entry.items() if key != "packing"})
    return groups


def pages(_, build):
    vistrel = build / "apps" / "vistrel"
    formats = json.loads(subprocess.check_output([vistrel, "formats", "--json"]))
    parts = [INTRODUCTION]
    for key, entries in formats.items():
        parts.append(f"## {words(key).capitalize()}\n")
        if "packing" in entries[0]:
            for packing, group in grouped(entries).items():
                parts.append(f"### Packing {packing}\n\n{rows(group)}")
        else:
            parts.append(rows(entries))
    return {"names.md": "\n".join(parts)}
