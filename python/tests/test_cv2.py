"""OpenCV takes the same mosaic for what it is, by cv2_code."""

import numpy as np
import pytest
import vistrel
from frames import MOSAICS, flat

cv2 = pytest.importorskip("cv2")

NAMES = {"rggb": "BG", "grbg": "GB", "bggr": "RG", "gbrg": "GR"}
WALL = (200, 120, 40)


@pytest.mark.parametrize("phase", MOSAICS)
@pytest.mark.parametrize("order", ["rgb", "bgr"])
def test_codes_are_opencvs_constants(phase, order):
    name = f"COLOR_Bayer{NAMES[phase]}2{order.upper()}"
    assert vistrel.cv2_code(phase, order) == getattr(cv2, name)


@pytest.mark.parametrize("phase", MOSAICS)
@pytest.mark.parametrize("order", ["rgb", "bgr"])
def test_colours_agree(phase, order):
    raw = flat(phase, (12, 16), WALL)
    ours = vistrel.convert(raw, phase, format=f"{order}24")
    theirs = cv2.cvtColor(raw, vistrel.cv2_code(phase, order))
    assert ours[5, 7].tolist() == list(WALL if order == "rgb" else WALL[::-1])
    assert np.array_equal(ours[2:-2, 2:-2], theirs[2:-2, 2:-2])


@pytest.mark.parametrize("phase", MOSAICS)
def test_another_phase_gives_other_colours(phase):
    raw = flat(phase, (12, 16), WALL)
    for other in set(MOSAICS) - {phase}:
        theirs = cv2.cvtColor(raw, vistrel.cv2_code(other))
        assert theirs[5, 7].tolist() != list(WALL)
