"""Pictures for the eye: the decisions and the bytes of the program."""

import concurrent.futures
import dataclasses
import json
import os
import subprocess
import time

import numpy as np
import pytest
import vistrel
from frames import MOSAICS, noise

PROGRAM = os.environ["VISTREL"]
LOOKS = ["auto", "linear", "srgb", "astro", "srgb,exposure=1.5", "black=5,white=200",
         "gains=2:1:1.5,highlights=clip", "curve=gamma:2.2", "astro,curve=asinh:20"]


def scene(bits, seed=1):
    """Smooth light of several colours, with noise and a bright spot."""
    y, x = np.mgrid[:66, :90]
    light = 0.1 + 0.25 * np.sin(x / 17) ** 2 + 0.2 * np.cos(y / 23) ** 2 * (x % 2) + (x + y > 145)
    light += np.random.default_rng(seed).normal(0, 0.01, light.shape)
    full = (1 << bits) - 1
    return np.clip(light * full, 0, full).astype(np.uint8 if bits == 8 else np.uint16)


def program(tmp_path, raw, phase, bits, *options):
    """What `vistrel develop` makes of a frame: pixels, and its report."""
    file = tmp_path / "frame.raw"
    raw.astype("<u2" if raw.itemsize == 2 else "u1").tofile(file)
    out = tmp_path / "picture.npy"
    out.unlink(missing_ok=True)
    size = f"{raw.shape[1]}x{raw.shape[0]}"
    report = subprocess.run(
        [PROGRAM, "develop", file, "-s", size, "--bits", str(bits), "--phase", phase, "--json",
         "-o", out, *options], check=True, stdout=subprocess.PIPE).stdout
    return np.load(out), json.loads(report)["inputs"][0]["outputs"][0]


@pytest.mark.parametrize("look", LOOKS)
@pytest.mark.parametrize("bits", [8, 12, 16])
def test_looks_are_the_programs(look, bits, tmp_path):
    raw = scene(bits)
    pixels, job = program(tmp_path, raw, "grbg", bits, "--look", look)
    assert np.array_equal(vistrel.develop(raw, "grbg", bits, look), pixels)
    decided = vistrel.decide_look(raw, "grbg", bits, look)
    assert decided == vistrel.Look(**job["look"])
    assert np.array_equal(vistrel.develop(raw, "grbg", bits, decided), pixels)
    again, _ = program(tmp_path, raw, "grbg", bits, "--look", str(decided))
    assert np.array_equal(again, pixels)


@pytest.mark.parametrize(
    "options, switches",
    [
        ({"algorithm": "vng"}, ["-a", "vng"]),
        ({"dtype": "uint16"}, ["--depth", "16"]),
        ({"region": (3, 5, 50, 41)}, ["--roi", "50x41+3+5"]),
        ({"binning": 2}, ["--bin", "2"]),
        ({"orientation": 6}, ["--orient", "90"]),
        ({"edges": "native"}, ["--edges", "native"]),
        ({"threads": 2}, []),
    ],
)
def test_options_are_the_programs(options, switches, tmp_path):
    raw = scene(10)
    pixels, _ = program(tmp_path, raw, "bggr", 10, *switches)
    assert np.array_equal(vistrel.develop(raw, "bggr", 10, **options), pixels)


def test_mono_frames_have_no_colours(tmp_path):
    raw = scene(12)
    pixels, job = program(tmp_path, raw, "mono", 12)
    look = vistrel.decide_look(raw, "mono", 12)
    assert look == vistrel.Look(**job["look"])
    assert look.gains is None and look.matrix is None and look.highlights is None
    assert np.array_equal(vistrel.develop(raw, "mono", 12), pixels)


@pytest.mark.parametrize("phase", MOSAICS)
def test_kinds_of_arrays(phase):
    raw = scene(12)
    expected = vistrel.develop(raw, phase, 12)
    wide = np.zeros((66, 120), np.uint16)
    wide[:, 7:97] = raw
    assert np.array_equal(vistrel.develop(raw.astype(">u2"), phase, 12), expected)
    assert np.array_equal(vistrel.develop(wide[:, 7:97], phase, 12), expected)
    assert np.array_equal(vistrel.develop(raw[::-1].copy()[::-1], phase, 12), expected)
    assert np.array_equal(vistrel.develop(raw << 4, phase, 12, align="high"), expected)
    out = np.empty_like(expected)
    assert vistrel.develop(raw, phase, 12, out=out) is out
    assert np.array_equal(out, expected)
    with vistrel.Stream() as stream:
        assert np.array_equal(vistrel.develop(raw, phase, 12, stream=stream), expected)


@pytest.mark.parametrize("bits", [8, 12, 16])
@pytest.mark.parametrize("options", [{}, {"orientation": 6}, {"threads": 2}, {"layout": "chw"}])
def test_floats_are_16_bits_by_full_scale(bits, options):
    raw = scene(bits)
    deep = vistrel.develop(raw, "rggb", bits, dtype="uint16", **options)
    floats = vistrel.develop(raw, "rggb", bits, dtype="float32", **options)
    assert np.array_equal(floats, deep.astype(np.float32) / np.float32(65535))


@pytest.mark.parametrize(
    "arguments, exception, code, text",
    [
        (("rggb", 12, "foo"), ValueError, "BAD_FINISH", "^look foo: NAME=VALUE is expected"),
        (("rggb", 12, ""), ValueError, "BAD_FINISH", "^look: a part is empty"),
        (("rggb", 12, "black=70000"), ValueError, "BAD_FINISH", "^look black=70000: black is"),
        (("rggb", 12, "white=5,black=5"), ValueError, "BAD_FINISH", "white=5 is not above black=5"),
        (("rggb", 12, "black=5000"), ValueError, "BAD_BLACK", "5000"),
        (("rggb", 12, "black=4095"), ValueError, "BAD_FINISH", "below the white level"),
        (("rggb", 12, 3), TypeError, "BAD_FINISH", "^look int: a str"),
        (("rggb", 7), ValueError, "BAD_BITS", "7"),
        (("rgbg", 12), ValueError, "BAD_PHASE", "rgbg"),
    ],
)
def test_rejection(arguments, exception, code, text):
    for call in (vistrel.develop, vistrel.decide_look):
        with pytest.raises(exception, match=text) as raised:
            call(scene(12), *arguments)
        assert raised.value.code == vistrel.Status[code]


def test_finished_pixels_have_no_look():
    with pytest.raises(ValueError, match="finished pixels have no look"):
        vistrel.develop(noise((20, 20, 3), 8), "bgr")


def test_regions_are_checked_before_samples_are_read():
    for region in [(0, 0, 91, 66), (4294967295, 0, 2, 2), (80, 0, 20, 20)]:
        with pytest.raises(ValueError) as raised:
            vistrel.decide_look(scene(12), "rggb", 12, region=region)
        assert raised.value.code == vistrel.Status.BAD_REGION


def test_looks_are_values():
    look = vistrel.Look(gains=[2, 1, 1.5], black=np.array([1, 2, 3, 4]))
    assert look == vistrel.Look(gains=(2, 1, 1.5), black=(1, 2, 3, 4))
    assert hash(look) == hash(vistrel.Look(gains=(2, 1, 1.5), black=(1, 2, 3, 4)))
    with pytest.raises(dataclasses.FrozenInstanceError):
        look.exposure = 2
    assert str(vistrel.Look()) == "auto"
    assert str(vistrel.Look(exposure=0.5)) == "exposure=0.5000"
    assert str(vistrel.Look("astro")) == "astro"


def test_a_whole_look_is_not_decided_again():
    """Another frame with the look of the first one is brighter, not as bright."""
    raw = scene(12)
    look = vistrel.decide_look(raw, "rggb", 12)
    dark = vistrel.develop(raw // 2, "rggb", 12, look)
    assert dark.mean() < 0.9 * vistrel.develop(raw, "rggb", 12, look).mean()
    assert vistrel.decide_look(raw // 2, "rggb", 12, look) == look


def test_threads_with_different_looks():
    raw = scene(12)
    expected = {look: vistrel.develop(raw, "rggb", 12, look) for look in LOOKS}
    assert len({image.tobytes() for image in expected.values()}) > 5

    def work(seed):
        for i in range(60):
            look = LOOKS[(i * seed + i) % len(LOOKS)]
            assert np.array_equal(vistrel.develop(raw, "rggb", 12, look), expected[look])
        return True

    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        assert all(pool.map(work, range(8)))


@pytest.mark.parametrize(
    "parts, argument, value",
    [
        ({"mode": "best"}, "mode", "'best'"),
        ({"gains": (1, 2)}, "look", "gains=1:2"),
        ({"exposure": float("nan")}, "look", "exposure=nan"),
        ({"matrix": np.eye(2)}, "look", "matrix=1.0000:0.0000:0.0000:1.0000"),
        ({"black": 70000}, "look", "black=70000"),
        ({"curve": "\ud800"}, "look", "'curve=\\ud800'"),
    ],
)
def test_looks_are_checked_when_they_are_made(parts, argument, value):
    with pytest.raises(vistrel.InvalidValue) as raised:
        vistrel.Look(**parts)
    error = raised.value
    assert (error.code, error.argument, error.value) == (vistrel.Status.BAD_FINISH, argument, value)


@pytest.mark.parametrize("kind", [np.array, np.matrix, np.ndarray.tolist, np.ravel])
def test_kinds_of_matrices(kind):
    rows = np.array([[1.5, -0.25, -0.25], [0, 1, 0], [0, -0.5, 1.5]])
    look = vistrel.Look(matrix=kind(rows))
    assert look == vistrel.Look(matrix=(1.5, -0.25, -0.25, 0.0, 1.0, 0.0, 0.0, -0.5, 1.5))


def test_a_dark_frame_takes_no_longer_than_others():
    """In CPU time of the process: a stretch of nothing is not searched for."""
    dark = np.zeros((64, 64), np.uint16)
    vistrel.develop(dark, "rggb", 12)

    def seconds():
        begin = time.process_time()
        vistrel.develop(dark, "rggb", 12)
        return time.process_time() - begin

    assert min(seconds() for _ in range(5)) < 0.02
