"""Enums, and the tables of formats and algorithms."""

import re
from pathlib import Path

import vistrel

ROOT = Path(__file__).resolve().parents[2]


def test_members_equal_their_str():
    assert vistrel.Phase.RGGB == "rggb"
    assert f"{vistrel.Format.BGR24} {str(vistrel.Algorithm.AHD)}" == "bgr24 ahd"
    assert {vistrel.Phase.GBRG: 1}["gbrg"] == 1


def test_enums_have_what_the_tables_have():
    assert {f.name for f in vistrel.formats()} == set(vistrel.Format)
    assert {a.name for a in vistrel.algorithms()} == set(vistrel.Algorithm)


def test_rows_have_what_the_header_says():
    formats = {f.name: f for f in vistrel.formats()}
    assert formats["rgba32"][1:] == (4, "u1", False, 1)
    assert formats["rgb48_planar"][1:] == (3, "u2", False, 3)
    assert formats["mono16"][1:] == (1, "u2", True, 1)
    algorithms = {a.name: a for a in vistrel.algorithms()}
    assert algorithms["cok"].max_bits == 10 and algorithms["ahd"].max_bits == 16


def test_version_is_that_of_the_header():
    header = (ROOT / "include/vistrel/vistrel_version.h").read_text()
    parts = re.findall(r"#define VISTREL_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header)
    assert vistrel.__version__ == ".".join(parts)


def test_all_public_names_are_documented():
    for name in vistrel.__all__:
        assert getattr(vistrel, name).__doc__, name
