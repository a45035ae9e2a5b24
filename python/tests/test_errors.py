"""Rejected calls: the exception, its code and its text."""

import subprocess
import sys

import c_interface as c
import numpy as np
import pytest
import vistrel
from frames import noise

RAW = noise((24, 32), 12)

CASES = [
    ({"phase": "rgb"}, ValueError, "BAD_PHASE"),
    ({"phase": 2}, TypeError, "BAD_PHASE"),
    ({"phase": b"rggb"}, TypeError, "BAD_PHASE"),
    ({"phase": "\ud800"}, ValueError, "BAD_PHASE"),
    ({"phase": "é" * 40}, ValueError, "BAD_PHASE"),
    ({"bits": 7}, ValueError, "BAD_BITS"),
    ({"bits": 17}, ValueError, "BAD_BITS"),
    ({"bits": -1}, ValueError, "BAD_BITS"),
    ({"bits": 1 << 70}, ValueError, "BAD_BITS"),
    ({"bits": 12.0}, TypeError, "BAD_BITS"),
    ({"bits": "12"}, TypeError, "BAD_BITS"),
    ({"bits": 9}, ValueError, "EXCESS_SAMPLE"),
    ({"algorithm": "ahdd"}, ValueError, "BAD_ALGORITHM"),
    ({"algorithm": None}, TypeError, "BAD_ALGORITHM"),
    ({"algorithm": "cok"}, ValueError, "BAD_ALGORITHM"),
    ({"format": "rgb"}, ValueError, "BAD_FORMAT"),
    ({"format": 8}, TypeError, "BAD_FORMAT"),
    ({"format": "mono8"}, ValueError, "BAD_FORMAT"),
    ({"format": "bgr24", "layout": "chw"}, ValueError, "BAD_FORMAT"),
    ({"format": "nv12", "dtype": "f4"}, ValueError, "BAD_FORMAT"),
    ({"format": "rgb24", "dtype": "u2"}, ValueError, "BAD_FORMAT"),
    ({"region": (0, 0, 32, 25)}, ValueError, "BAD_REGION"),
    ({"region": (0, 0, 0, 0)}, ValueError, "BAD_REGION"),
    ({"region": (0, 0, -1, 5)}, ValueError, "BAD_REGION"),
    ({"region": (0, 0, 4)}, ValueError, "BAD_REGION"),
    ({"region": 5}, TypeError, "BAD_REGION"),
    ({"region": "0,0,4,4"}, TypeError, "BAD_REGION"),
    ({"region": (0, 0, 4.5, 4)}, TypeError, "BAD_REGION"),
    ({"binning": 0}, ValueError, "BAD_BINNING"),
    ({"binning": 5}, ValueError, "BAD_BINNING"),
    ({"bin_mode": "max"}, ValueError, "BAD_BINNING"),
    ({"window": 3}, ValueError, "BAD_REDUCTION"),
    ({"window": 2**32}, ValueError, "BAD_REDUCTION"),
    ({"curve": 1}, ValueError, "BAD_REDUCTION"),
    ({"curve": 7}, ValueError, "BAD_REDUCTION"),
    ({"curve": 2, "window": 1}, ValueError, "BAD_REDUCTION"),
    ({"curve": 2, "table": np.zeros(1024, int)}, ValueError, "BAD_REDUCTION"),
    ({"table": np.zeros(1000, int)}, ValueError, "BAD_TABLE"),
    ({"table": []}, TypeError, "BAD_TABLE"),
    ({"table": np.zeros(0, int)}, ValueError, "BAD_TABLE"),
    ({"table": np.full(1024, 256)}, ValueError, "BAD_TABLE"),
    ({"table": np.full(1024, -1)}, ValueError, "BAD_TABLE"),
    ({"table": np.full(1024, 70000)}, ValueError, "BAD_TABLE"),
    ({"table": np.zeros(1024)}, TypeError, "BAD_TABLE"),
    ({"table": [[1], [2, 3]]}, TypeError, "BAD_TABLE"),
    ({"table": np.zeros((32, 32), int)}, TypeError, "BAD_TABLE"),
    ({"black": 4096}, ValueError, "BAD_BLACK"),
    ({"black": -1}, ValueError, "BAD_BLACK"),
    ({"black": (1, 2, 3)}, ValueError, "BAD_BLACK"),
    ({"black": "1"}, TypeError, "BAD_BLACK"),
    ({"white": 4096}, ValueError, "BAD_WHITE"),
    ({"white": 1.5}, TypeError, "BAD_WHITE"),
    ({"gains": "auto"}, ValueError, "BAD_BALANCE"),
    ({"gains": (1, 1)}, ValueError, "BAD_BALANCE"),
    ({"gains": (1, 1, 17)}, ValueError, "BAD_BALANCE"),
    ({"gains": (1, 1, 0)}, ValueError, "BAD_BALANCE"),
    ({"gains": (1, 1, float("nan"))}, ValueError, "BAD_BALANCE"),
    ({"gains": 2}, TypeError, "BAD_BALANCE"),
    ({"gains": (1, "2", 1)}, TypeError, "BAD_BALANCE"),
    ({"gains": (1, 1, 2), "phase": "mono"}, ValueError, "BAD_BALANCE"),
    ({"edges": "mirror"}, ValueError, "BAD_EDGES"),
    ({"edges": 1}, TypeError, "BAD_EDGES"),
    ({"threshold": 1}, ValueError, "BAD_THRESHOLD"),
    ({"threshold": 256, "algorithm": "edge"}, ValueError, "BAD_THRESHOLD"),
    ({"gray": "green"}, ValueError, "BAD_GRAY"),
    ({"truncate_to": 7}, ValueError, "BAD_TRUNCATION"),
    ({"excess": "clip"}, ValueError, "BAD_EXCESS"),
    ({"align": "middle"}, ValueError, "BAD_ALIGNMENT"),
    ({"orientation": 9}, ValueError, "BAD_ORIENTATION"),
    ({"threads": 257}, ValueError, "BAD_THREADS"),
    ({"threads": -1}, ValueError, "BAD_THREADS"),
    ({"threads": 1.0}, TypeError, "BAD_THREADS"),
    ({"layout": "nchw"}, ValueError, "BAD_FORMAT"),
    ({"dtype": "i2"}, TypeError, "BAD_FORMAT"),
    ({"dtype": "f8"}, TypeError, "BAD_FORMAT"),
    ({"dtype": ">f4"}, TypeError, "BAD_FORMAT"),
    ({"dtype": "colour"}, TypeError, "BAD_FORMAT"),
    ({"stream": 5}, TypeError, "BAD_STREAM"),
]


def check_text(error):
    subject = " ".join(part for part in (error.argument, error.value) if part)
    assert str(error) == (f"{subject}: {error.reason}" if subject else error.reason)


@pytest.mark.parametrize("options, exception, code", CASES, ids=ascii)
def test_rejection(options, exception, code):
    arguments = {"phase": "rggb", "bits": 12} | options
    with pytest.raises(exception) as raised:
        vistrel.convert(RAW, **arguments)
    error = raised.value
    assert isinstance(error, vistrel.Error)
    assert error.code == vistrel.Status[code]
    check_text(error)
    if len(options) == 1 and code != "EXCESS_SAMPLE":
        assert error.argument.split(".")[0].split("[")[0] in (*options, "frame", "conversion")


@pytest.mark.parametrize(
    "options, fields",
    [
        ({"bits": 9}, {}),
        ({"bits": 17}, {}),
        ({"binning": 5}, {"binning": 5}),
        ({"region": (0, 0, 32, 25)}, {"region": (0, 0, 32, 25)}),
        ({"black": 4096}, {"black": [4096] * 4}),
        ({"truncate_to": 7}, {"truncate_to": 7}),
        ({"algorithm": "kimmel"}, {"algorithm": "kimmel"}),
        ({"orientation": 9}, {"orientation": 9}),
    ],
    ids=str,
)
def test_text_and_code_are_those_of_the_c_interface(options, fields):
    options = {"bits": 12} | options
    frame = c.frame_of(RAW, "rggb", options["bits"])
    with pytest.raises(c.Rejected) as expected:
        c.convert(frame, c.conversion_of(frame, format="rgb24", **fields))
    with pytest.raises(vistrel.InvalidValue) as raised:
        vistrel.convert(RAW, "rggb", **options)
    assert str(raised.value) == str(expected.value)
    assert raised.value.code == expected.value.status


def test_codes_are_those_of_the_c_interface():
    c.library.vistrel_status_name.restype = c.ctypes.c_char_p
    for code in vistrel.Status:
        assert c.library.vistrel_status_name(code.value).decode() == f"VISTREL_{code.name}"
    assert c.library.vistrel_status_name(len(vistrel.Status)) is None


def test_errors_survive_a_process_pool():
    import pickle

    error = vistrel.InvalidValue("a 1: b", 3, "a", "1", "b")
    copy = pickle.loads(pickle.dumps(error))
    assert (str(copy), copy.code, copy.argument) == ("a 1: b", 3, "a")


@pytest.mark.parametrize(
    "call, exception, code, argument",
    [
        (lambda: vistrel.phase_at("rgb", 1, 1), ValueError, "BAD_PHASE", "phase"),
        (lambda: vistrel.phase_at("rggb", 1.5, 1), TypeError, "BAD_REGION", "x"),
        (lambda: vistrel.flip("rggb", 5), TypeError, "BAD_SIZE", "shape"),
        (lambda: vistrel.flip("rggb", (5, 5, 3)), ValueError, "BAD_SIZE", "shape"),
        (lambda: vistrel.flip("rggb", ("5", 5)), TypeError, "BAD_SIZE", "shape"),
        (lambda: vistrel.flip("rggb", (5, 5), 2), ValueError, "BAD_ORIENTATION", "axis"),
        (lambda: vistrel.flip("rggb", (5, 5), RAW), TypeError, "BAD_ORIENTATION", "axis"),
        (lambda: vistrel.rotate("rggb", (5, 5), 0.5), TypeError, "BAD_ORIENTATION", "k"),
        (lambda: vistrel.cv2_code("rggb", RAW), ValueError, "BAD_FORMAT", "order"),
        (lambda: vistrel.unpack(b"", "no", 2, 2), ValueError, "BAD_FORMAT", "pixel_format"),
        (lambda: vistrel.unpack(b"1234", "Mono8", 2, 2, None, RAW), ValueError, "BAD_CONTINUOUS",
         "continuous"),
        (lambda: vistrel.read(5), TypeError, "BAD_FORMAT", "path"),
        (lambda: vistrel.read(__file__, range=5), TypeError, "BAD_TABLE", "range"),
        (lambda: vistrel.read(__file__, range=(1, "2")), TypeError, "BAD_TABLE", "range"),
        (lambda: vistrel.read(__file__, from_name=RAW), ValueError, "BAD_BITS", "from_name"),
        (lambda: vistrel.write(None, RAW), TypeError, "BAD_FORMAT", "path"),
        (lambda: vistrel.write("a\0.png", RAW), ValueError, "BAD_FORMAT", "path"),
        (lambda: vistrel.write("\ud800.png", RAW), ValueError, "BAD_FORMAT", "path"),
        (lambda: vistrel.write("a.gif", RAW), ValueError, "BAD_FORMAT", "path"),
        (lambda: vistrel.write("a.png", [[1], [2, 3]]), TypeError, "BAD_FORMAT", "image"),
        (lambda: vistrel.write("a.png", RAW, "12"), TypeError, "BAD_BITS", "bits"),
        (lambda: vistrel.develop(RAW, "rggb", 12, stream=5), TypeError, "BAD_STREAM", "stream"),
        (lambda: vistrel.develop(RAW, "rggb", 12, "best"), ValueError, "BAD_FINISH", "look"),
        (lambda: vistrel.develop(RAW, "rggb", 12, "black=2,white=1"), ValueError, "BAD_FINISH",
         "look"),
        (lambda: vistrel.develop(RAW, "rggb", 12, "black=4095"), ValueError, "BAD_FINISH", "look"),
    ],
)
def test_other_calls_have_the_same_errors(call, exception, code, argument):
    with pytest.raises(exception) as raised:
        call()
    error = raised.value
    assert isinstance(error, vistrel.Error)
    assert (error.code, error.argument) == (vistrel.Status[code], argument)
    check_text(error)


def test_an_exception_of_an_argument_passes_through():
    class Broken:
        def __index__(self):
            raise ZeroDivisionError

    with pytest.raises(ZeroDivisionError):
        vistrel.convert(RAW, "rggb", 12, binning=Broken())


NO_MEMORY = """
import resource
import numpy
import vistrel
image = numpy.zeros((8000, 8000, 3), numpy.uint8)
vistrel.write("small.png", image[:9, :9])
used = 4096 * int(open("/proc/self/statm").read().split()[0])
resource.setrlimit(resource.RLIMIT_AS, (used + image.nbytes // 2, -1))
try:
    vistrel.write("large.raw", image)
except vistrel.OutOfMemory as error:
    print(error.code.name)
"""


def test_a_failed_allocation_is_an_error_of_the_package(tmp_path):
    done = subprocess.run([sys.executable, "-c", NO_MEMORY], capture_output=True, text=True,
                          cwd=tmp_path)
    assert (done.returncode, done.stdout) == (0, "NO_MEMORY\n"), done.stderr
