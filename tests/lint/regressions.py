#!/usr/bin/env python3
"""regressions.py ROOT: fails unless each fault in tests/regressions/faults.md has a test, and each
test is in the sources. A test is a case of GoogleTest (Suite.Name), of pytest
(test_file.py::test_name), or an entry of ctest (lint.format)."""

import pathlib
import re
import sys

CASE = re.compile(r"^(?:TYPED_)?TEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\s*\)", re.M)
FUNCTION = re.compile(r"^def (test_\w+)\(", re.M)
ENTRY = re.compile(r"add_test\(NAME ([^\s)]+)")
VARIABLE = re.compile(r"\$\{\w+\}")
WORD = re.compile(r"[^\s()=\"]+")


def cases(root):
    for path in root.glob("tests/**/*_test.cpp"):
        yield from (".".join(case) for case in CASE.findall(path.read_text()))
    for path in root.glob("python/tests/test_*.py"):
        yield from (f"{path.name}::{name}" for name in FUNCTION.findall(path.read_text()))


def has_text(word):
    """Whether it is more than variables."""
    return VARIABLE.sub("", word)


class Entries:
    """The entries that a CMakeLists.txt adds. Functions and loops compose their names of words
    in the file: a variable in a name stands for any of these."""

    def __init__(self, path):
        text = path.read_text()
        self.names = list(filter(has_text, ENTRY.findall(text)))
        self.words = set(filter(has_text, WORD.findall(text)))

    def has(self, test):
        return any(self.composes(name, test) for name in self.names)

    def composes(self, name, test):
        pattern = "(.*)".join(re.escape(part) for part in VARIABLE.split(name))
        match = re.fullmatch(pattern, test)
        return match and all(self.is_known(part) for part in match.groups())

    def is_known(self, part):
        return not part or part.isdigit() or part in self.words or any(
            self.composes(word, part) for word in self.words if "${" in word)


def faults(root):
    """Each fault with its tests: a paragraph, in which the tests are in backquotes."""
    page = (root / "tests/regressions/faults.md").read_text()
    for paragraph in re.split(r"\n{2,}", page.strip()):
        if not paragraph.startswith("#"):
            yield paragraph.split("`")[0].strip(), re.findall(r"`([^`]*)`", paragraph)


def main(root):
    known = set(cases(root))
    files = [*root.glob("tests/**/CMakeLists.txt"), *root.glob("python/tests/CMakeLists.txt")]
    entries = [Entries(path) for path in files]
    errors, count = [], 0
    for count, (fault, tests) in enumerate(faults(root), 1):
        if not tests:
            errors.append(f"no test: {fault}")
        errors += (f"there is no test {test}" for test in tests
                   if test not in known and not any(e.has(test) for e in entries))
    if not count:
        errors.append("there is no fault in tests/regressions/faults.md")
    print("\n".join(errors) or f"{count} faults have tests")
    return bool(errors)


sys.exit(main(pathlib.Path(sys.argv[1])))
