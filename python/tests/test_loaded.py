"""Errors stay errors beside GStreamer, which loads libunwind: it has the names of libgcc's unwinder.

A process that mixes the two dies when an exception is thrown."""

import subprocess
import sys

import pytest

pytest.importorskip("gi")

GSTREAMER = """
import gi
gi.require_version("Gst", "1.0")
from gi.repository import Gst
Gst.init(None)
"""
ERRORS = """
import numpy
raw = numpy.zeros((24, 32), numpy.uint16)
calls = [
    lambda: vistrel.read(__file__),
    lambda: vistrel.write("a.gif", raw),
    lambda: vistrel.convert(raw, "rggb", bits=7),
    lambda: vistrel.convert(raw + 9, "rggb", bits=12, excess="no"),
    lambda: vistrel.develop(raw, "rggb", 12, "best"),
    lambda: vistrel.unpack(b"", "RG12", 2, 2),
    lambda: vistrel.guess(5),
]
for call in calls:
    try:
        call()
    except vistrel.Error:
        calls = calls[1:]
print(len(calls))
"""


@pytest.mark.parametrize("before", ["import vistrel\n", GSTREAMER, "import vistrel, vistrel._files\n"])
def test_errors_beside_gstreamer(before, tmp_path):
    script = tmp_path / "script.py"
    script.write_text(before + GSTREAMER + "import vistrel\n" + ERRORS)
    done = subprocess.run([sys.executable, script], capture_output=True, text=True)
    assert (done.returncode, done.stdout) == (0, "0\n"), done.stderr
