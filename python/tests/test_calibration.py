"""Dark frames, flat fields and hot pixels: the documented sums, and the program's bytes."""

import os
import subprocess

import numpy as np
import pytest
import vistrel
from frames import MOSAICS, noise

H, W = 48, 64
HOT = [(5, 7), (5, 7), (63, 0), (0, 47), (9, 7)]
DARK = noise((H, W), 8, 2).astype(np.uint16)
FLAT = 1500 + noise((H, W), 10, 3)
RAW = 300 + noise((H, W), 11, 1)


def gains_of(flat, dark):
    v = np.maximum(flat.astype(np.int64) - dark, 0)
    gains = np.zeros(v.shape, np.int64)
    for row in (0, 1):
        for column in (0, 1):
            place = v[row::2, column::2]
            mean = int(np.floor(place.sum() * 256 / place.size + 0.5))
            gain = np.minimum((16 * mean + place // 2) // np.maximum(place, 1), 65535)
            gains[row::2, column::2] = np.where(place, gain, 65535 if mean else 4096)
    return gains


def calibrated(raw, dark, flat, hot, bits, mosaic=True):
    """As the C interface's header says, in NumPy."""
    gains = gains_of(flat, dark)
    f = np.minimum(((np.maximum(raw.astype(np.int64) - dark, 0) * gains) + 2048) >> 12,
                   2**bits - 1)
    bad, step = set(hot), 2 if mosaic else 1
    result = f.copy()
    for x, y in bad:
        sides = [range(x - step, -1, -step), range(x + step, W, step)]
        found = [next((f[y, i] for i in side if (i, y) not in bad), None) for side in sides]
        found = [value for value in found if value is not None]
        result[y, x] = (sum(found) + len(found) // 2) // len(found) if found else 0
    return result.astype(np.uint16)


@pytest.mark.parametrize("align", ["low", "high"])
@pytest.mark.parametrize("phase", ["rggb", "mono"])
def test_samples_become_what_the_header_says(phase, align):
    shift = 4 if align == "high" else 0
    options = {"dark": DARK << shift, "flat": FLAT << shift, "hot": HOT}
    expected = calibrated(RAW, DARK, FLAT, HOT, 12, phase != "mono")
    plain = vistrel.convert(expected, phase, 12, dtype="uint16")
    assert np.array_equal(vistrel.convert(RAW << shift, phase, 12, dtype="uint16", align=align,
                                          **options), plain)
    floats = vistrel.convert(RAW << shift, phase, 12, dtype="f4", align=align, **options)
    assert np.array_equal(floats, plain / np.float32(4095))


def test_black_is_below_a_flat_field_without_a_dark_frame():
    zero = np.zeros_like(RAW)
    image = vistrel.convert(RAW, "mono", 12, dtype="uint16", black=200, flat=FLAT)
    gains = gains_of(FLAT, zero + 200)
    expected = np.minimum(((RAW.astype(np.int64) - 200) * gains + 2048) >> 12, 4095)
    assert np.array_equal(image, expected)


@pytest.mark.parametrize("phase", [*MOSAICS, "mono"])
@pytest.mark.parametrize("parts", ["dark", "flat", "hot", "dark flat hot"])
def test_pictures_have_the_programs_bytes(phase, parts, tmp_path):
    light = RAW + np.repeat([0, 200, 500, 900], W // 4).astype(np.uint16)
    arrays = {"dark": DARK, "flat": FLAT, "hot": HOT}
    files = {"dark": "dark.dng", "flat": "flat.dng", "hot": "hot.txt"}
    if phase == "mono":
        files = {name: file.replace("dng", "pgm") for name, file in files.items()}
    source = "light.pgm" if phase == "mono" else "light.dng"
    vistrel.write(tmp_path / source, light, 12, phase=phase)
    for name in ("dark", "flat"):
        vistrel.write(tmp_path / files[name], arrays[name], 12, phase=phase)
    (tmp_path / "hot.txt").write_text("".join(f"{x} {y}\n" for x, y in HOT))
    options = [text for name in parts.split() for text in (f"--{name}", files[name])]
    frame = vistrel.read(tmp_path / source)
    given = {name: arrays[name] for name in parts.split()}
    for command, image in (
        (["convert", "--depth", "16"], frame.convert(algorithm="ahd", dtype="u2", **given)),
        (["develop"], frame.develop(algorithm="ahd", **given)),
    ):
        run = [os.environ["VISTREL"], *command, source, "-a", "ahd", *options, "-o", "out.npy"]
        if phase == "mono":
            run = [text for text in run if text not in ("-a", "ahd")]
        subprocess.run(run, cwd=tmp_path, check=True, capture_output=True)
        assert np.array_equal(np.load(tmp_path / "out.npy"), image), command
        (tmp_path / "out.npy").unlink()


def test_a_decided_look_is_that_of_the_calibrated_frame():
    options = {"dark": DARK, "flat": FLAT, "hot": HOT}
    look = vistrel.decide_look(RAW, "rggb", 12, **options)
    assert look != vistrel.decide_look(RAW, "rggb", 12)
    assert np.array_equal(vistrel.develop(RAW, "rggb", 12, look, **options),
                          vistrel.develop(RAW, "rggb", 12, **options))


@pytest.mark.parametrize(
    "options, exception, argument",
    [
        ({"dark": DARK[1:]}, ValueError, "dark.shape"),
        ({"dark": DARK.astype(int)}, TypeError, "dark.dtype"),
        ({"dark": "dark.fits"}, TypeError, "dark"),
        ({"flat": FLAT[:, :, None]}, ValueError, "flat.shape"),
        ({"flat": FLAT / 2}, TypeError, "flat.dtype"),
        ({"hot": [(64, 0)]}, ValueError, "calibration.hot[0]"),
        ({"hot": [(0, -1)]}, ValueError, "hot"),
        ({"hot": [(0, 1, 2)]}, ValueError, "hot.shape"),
        ({"hot": [(0.5, 1)]}, TypeError, "hot.dtype"),
        ({"hot": "hot.txt"}, TypeError, "hot.dtype"),
    ],
)
def test_rejections(options, exception, argument):
    for call in (vistrel.convert, vistrel.develop):
        with pytest.raises(exception) as raised:
            call(RAW, "rggb", 12, **options)
        error = raised.value
        assert isinstance(error, vistrel.Error)
        assert (error.argument, error.code) in (
            (argument, vistrel.Status.BAD_CALIBRATION), (argument, vistrel.Status.NULL_POINTER))


def test_no_hot_pixels_are_none():
    for none in ([], np.empty((0, 2), int)):
        assert np.array_equal(vistrel.convert(RAW, "rggb", 12, hot=none),
                              vistrel.convert(RAW, "rggb", 12))
