"""What becomes of a phase when its frame is cropped, mirrored or turned."""

from __future__ import annotations

import typing

from . import _core
from ._arguments import integer_of, size_of
from ._errors import InvalidValue, Status, rejection
from ._names import Phase

# OpenCV names the block at row 1, column 1: these are its COLOR_Bayer..2RGB.
_CV2_RGB = {Phase.RGGB: 48, Phase.GRBG: 49, Phase.BGGR: 46, Phase.GBRG: 47}


def _is_mosaic(phase: Phase) -> bool:
    return phase not in (Phase.MONO, Phase.BGR)


def phase_at(phase: str, x: typing.SupportsIndex, y: typing.SupportsIndex) -> Phase:
    """Return the phase of a frame that begins at column `x` and row `y` of another.

    Parameters
    ----------
    phase : str or Phase
        Phase of the whole frame.
    x, y : int
        First column and row of the crop, in pixels.

    Returns
    -------
    Phase
        `phase` itself if the frame is not a mosaic.

    Examples
    --------
    A crop is a slice, with the rows first:

    >>> raw = numpy.zeros((48, 64), numpy.uint8)
    >>> crop, phase = raw[7:, 3:], vistrel.phase_at("rggb", x=3, y=7)
    >>> phase.value
    'bggr'
    """
    x, y = integer_of(x, Status.BAD_REGION, "x"), integer_of(y, Status.BAD_REGION, "y")
    return Phase(_core.phase_at(phase, x % 2, y % 2))


def flip(phase: str, shape: tuple[int, int],
         axis: typing.Literal[0, 1] | None = None) -> Phase:
    """Return the phase of ``numpy.flip(raw, axis)``.

    Parameters
    ----------
    phase : str or Phase
        Phase of the frame before.
    shape : tuple of int
        Its height and width, as ``raw.shape``.
    axis : {None, 0, 1}, optional
        0 exchanges top and bottom, 1 left and right, None both.

    Returns
    -------
    Phase

    Examples
    --------
    >>> vistrel.flip("rggb", (48, 64), axis=1).value
    'grbg'
    """
    height, width = size_of(shape)
    if axis is not None and integer_of(axis, Status.BAD_ORIENTATION, "axis") not in (0, 1):
        raise rejection(InvalidValue, Status.BAD_ORIENTATION, "axis", repr(axis), "None, 0 or 1")
    return phase_at(phase, 0 if axis == 0 else width - 1, 0 if axis == 1 else height - 1)


def rotate(phase: str, shape: tuple[int, int], k: typing.SupportsIndex = 1) -> Phase:
    """Return the phase of ``numpy.rot90(raw, k)``.

    Parameters
    ----------
    phase, shape
        As of `flip`.
    k : int, optional
        Turns of 90 degrees, counterclockwise; clockwise if negative.

    Returns
    -------
    Phase

    Examples
    --------
    >>> vistrel.rotate("grbg", (48, 64)).value
    'rggb'
    """
    height, width = size_of(shape)
    phase = Phase(_core.phase_name(phase))
    for _ in range(integer_of(k, Status.BAD_ORIENTATION, "k") % 4):
        if _is_mosaic(phase):  # the columns, from the last to the first, become rows
            a, b, c, d = tuple(phase_at(phase, width - 2, 0).value)
            phase = Phase(b + d + a + c)
        height, width = width, height
    return phase


def cv2_code(phase: str, order: typing.Literal["rgb", "bgr"] = "rgb") -> int:
    """Return the code for ``cv2.cvtColor`` that takes a mosaic for what it is.

    OpenCV names a mosaic after the 2x2 block at row 1, column 1, so the letters of its constants
    are not those of the first pixels.

    Parameters
    ----------
    phase : str or Phase
        Phase of the frame: one of the four mosaics.
    order : {"rgb", "bgr"}, optional
        Order of the result's samples.

    Returns
    -------
    int

    Examples
    --------
    >>> vistrel.cv2_code("rggb", "bgr")  # cv2.COLOR_BayerBG2BGR
    46
    """
    name = Phase(_core.phase_name(phase))
    if not _is_mosaic(name):
        raise rejection(InvalidValue, Status.BAD_PHASE, "phase", str(name), "not a mosaic")
    if not isinstance(order, str) or order not in ("rgb", "bgr"):
        raise rejection(InvalidValue, Status.BAD_FORMAT, "order", ascii(order), "rgb or bgr")
    # Red and blue exchanged are the mosaic of the pixel diagonally opposite.
    return _CV2_RGB[phase_at(name, 1, 1) if order == "bgr" else name]
