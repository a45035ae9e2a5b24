"""Examples in docstrings and on pages."""

import contextlib
import doctest
import io
import os
import re
from pathlib import Path

import dask
import numpy
import pytest
import vistrel
import vistrel.dask
from vistrel import _conversion, _development, _errors, _frames, _guessing, _names, _phases

ROOT = Path(__file__).resolve().parents[2]
NAMES = {"dask": dask, "numpy": numpy, "os": os, "vistrel": vistrel}


@pytest.mark.parametrize(
    "module, least",
    [(_conversion, 11), (_development, 9), (_errors, 8), (_frames, 11), (_guessing, 7), (_names, 8),
     (_phases, 5), (vistrel.dask, 14)],
)
def test_docstrings(module, least, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    result = doctest.testmod(module, extraglobs=NAMES)
    assert result.failed == 0
    assert result.attempted >= least


def public():
    """Every public name of both modules, and the methods of classes."""
    for module in (vistrel, vistrel.dask):
        for name in module.__all__:
            found = getattr(module, name)
            yield name, found
            if isinstance(found, type) and not issubclass(found, (str, int, tuple, Exception)):
                for part, method in vars(found).items():
                    if callable(method) and part[0] != "_":
                        yield f"{name}.{part}", method


def test_every_docstring_has_an_example():
    without = [name for name, found in public()
               if callable(found) and ">>>" not in (found.__doc__ or "")]
    assert not without
    assert len(list(public())) >= 39


def blocks(page):
    """Each block of Python, and what the page says that it prints: "It prints `...`"."""
    text = (ROOT / page).read_text()
    return re.findall(r"```python\n(.*?)```(?:\n\nIt prints `([^`]*)`)?", text, re.S)


@pytest.mark.parametrize("page, least", [
    ("README.md", 1), ("docs/python.md", 10), ("docs/python-tutorial.md", 9),
    ("docs/python-astronomy.md", 5), ("docs/many-machines.md", 2),
])
def test_pages(page, least, tmp_path, monkeypatch):
    """The blocks of a page run one after the other, in one namespace."""
    monkeypatch.chdir(tmp_path)
    names, found = {}, blocks(page)
    assert len(found) >= least
    for code, promise in found:
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            exec(compile(code, page, "exec"), names)
        if promise or printed.getvalue():
            assert printed.getvalue().strip() == promise
