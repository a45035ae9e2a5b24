"""Phases of crops, mirrored and turned frames, by the colours of all pixels."""

import c_interface as c
import numpy as np
import pytest
import vistrel
from frames import MOSAICS


def colours(phase, shape):
    """The letter of each pixel."""
    mosaic = np.empty(shape, "U1")
    for i, letter in enumerate(phase):
        mosaic[i // 2 :: 2, i % 2 :: 2] = letter
    return mosaic


SHAPES = [(4, 6), (5, 6), (4, 7), (5, 7)]


@pytest.mark.parametrize("phase", MOSAICS)
def test_crops(phase):
    mosaic = colours(phase, (8, 8))
    for y in range(4):
        for x in range(4):
            crop = mosaic[y:, x:]
            assert (crop == colours(vistrel.phase_at(phase, x, y), crop.shape)).all()
            assert vistrel.phase_at(phase, x - 8, y - 2**70) == vistrel.phase_at(phase, x, y)
            at = c.library.vistrel_phase_at(c.code("phase", phase), x, y)
            assert at == c.code("phase", vistrel.phase_at(phase, x, y).value)


@pytest.mark.parametrize("shape", SHAPES)
@pytest.mark.parametrize("phase", MOSAICS)
def test_mirrored_and_turned(phase, shape):
    mosaic = colours(phase, shape)
    for axis in (None, 0, 1):
        flipped = np.flip(mosaic, axis)
        assert (flipped == colours(vistrel.flip(phase, shape, axis), flipped.shape)).all()
    for k in range(-5, 6):
        turned = np.rot90(mosaic, k)
        assert (turned == colours(vistrel.rotate(phase, shape, k), turned.shape)).all()


def test_other_frames_keep_their_phase():
    for phase in ("mono", "bgr"):
        assert vistrel.phase_at(phase, 1, 1) == phase
        assert vistrel.flip(phase, (3, 4)) == phase
        assert vistrel.rotate(phase, (3, 4)) == phase


@pytest.mark.parametrize("call", [
    lambda: vistrel.phase_at("rg", 0, 0),
    lambda: vistrel.flip("rggb", (4, 4), 2),
    lambda: vistrel.rotate("", (4, 4)),
    lambda: vistrel.cv2_code("mono"),
    lambda: vistrel.cv2_code("rggb", "gbr"),
])
def test_bad_arguments(call):
    with pytest.raises(vistrel.InvalidValue):
        call()
