"""Frames to pictures for the eye."""

from __future__ import annotations

import dataclasses
import typing

import numpy as np
import numpy.typing as npt

from . import _core
from ._arguments import handle_of, points_of
from ._errors import InvalidType, InvalidValue, Status, rejection

Samples = typing.Any  # an array, or anything that offers one
Region = typing.Optional[typing.Sequence[int]]


def _text_of(value: object) -> str:
    if isinstance(value, tuple):
        return ":".join(map(_text_of, value))
    return f"{value:.4f}" if isinstance(value, float) else str(value)


@dataclasses.dataclass(frozen=True)
class Look:
    """All that decides how a picture appears. Parts that are None are decided from the frame.

    Colours are scaled from black..white to 0..1 and multiplied by the gains; then follow
    highlights, matrix, exposure and curve. ``str()`` is what ``vistrel develop --look`` takes, and
    ``Look(**report["look"])`` is what its ``--json`` prints.

    Parameters
    ----------
    mode : {"auto", "linear", "srgb", "astro"}, optional
        How parts are decided.
    black : int or 4 ints, optional
        Level without light: one, or those of the 2x2 block at ``raw[0, 0]``, row by row.
    white : int, optional
        Level at which the sensor clips.
    gains : 3 floats, optional
        White balance: red, green, blue from 1/4096 to 16.
    matrix : 9 floats, optional
        Colour matrix, row by row, from the camera's colours to linear sRGB.
    exposure : float, optional
        A factor from 1/4096 to 1024.
    curve : str, optional
        ``"linear"``, ``"srgb"``, ``"gamma:2.2"`` or ``"asinh:50"``.
    highlights : {"neutral", "clip"}, optional
        What becomes of pixels where the sensor clips.

    Raises
    ------
    InvalidValue
        A part that `vistrel.develop` would reject.

    Examples
    --------
    >>> str(vistrel.Look(mode="srgb", black=64, gains=(2, 1, 1.5)))
    'srgb,black=64,gains=2:1:1.5000'
    """

    mode: str = "auto"
    black: int | tuple[int, ...] | None = None
    white: int | None = None
    gains: tuple[float, ...] | None = None
    matrix: tuple[float, ...] | None = None
    exposure: float | None = None
    curve: str | None = None
    highlights: str | None = None

    def __post_init__(self) -> None:
        for name, value in vars(self).items():
            if isinstance(value, (list, tuple, np.ndarray)):
                object.__setattr__(self, name, tuple(np.ravel(np.array(value, object))))
        if self.mode not in ("auto", "linear", "srgb", "astro"):
            raise rejection(InvalidValue, Status.BAD_FINISH, "mode", ascii(self.mode),
                            "auto, linear, srgb or astro")
        _core.check_look(str(self))

    def _parts(self) -> dict[str, typing.Any]:
        return {name: value for name, value in vars(self).items()
                if name != "mode" and value is not None}

    def __str__(self) -> str:
        parts = [f"{name}={_text_of(value)}" for name, value in self._parts().items()]
        return ",".join(parts if parts and self.mode == "auto" else [self.mode, *parts])


def text_of(look: str | Look) -> str:
    """A look as the extension takes it."""
    if isinstance(look, Look):
        return str(look)
    if isinstance(look, str):
        return look
    raise rejection(InvalidType, Status.BAD_FINISH, "look", type(look).__name__, "a str or a Look")


def _arguments(look: str | Look, raw: Samples, phase: str, bits: int | None, algorithm: str,
               format: str | None, region: Region, binning: int, edges: str, threshold: int,
               excess: str, align: str, orientation: int, threads: int, layout: str,
               dtype: npt.DTypeLike, out: npt.NDArray[typing.Any] | None,
               stream: typing.Any, dark: Samples, flat: Samples, hot: Samples,
               ) -> tuple[typing.Any, ...]:
    """In the order of the extension."""
    return (handle_of(stream), raw, phase, bits, algorithm, format,
            region, binning, "mean", 0, None, None, None, None, None, edges, threshold, "luma",
            None, excess, align, orientation, threads, layout, dtype, out,
            dark, flat, points_of(hot), text_of(look))


def develop(raw: Samples, phase: str, bits: int | None = None, look: str | Look = "auto",
            algorithm: str = "directional", format: str | None = None, *, region: Region = None,
            binning: int = 1, edges: str = "padded", threshold: int = 0, excess: str = "reject",
            align: str = "low", orientation: int = 1, threads: int = 1, layout: str = "hwc",
            dtype: npt.DTypeLike = None, out: npt.NDArray[typing.Any] | None = None,
            stream: typing.Any = None, dark: Samples = None, flat: Samples = None,
            hot: Samples = None) -> npt.NDArray[typing.Any]:
    """Make a picture for the eye of a raw frame, as ``vistrel develop`` does.

    Unlike `convert`, it decides how the picture should look: levels, white balance, exposure and
    curve. Equal frames have equal pictures, on every machine.

    Parameters
    ----------
    raw, phase, bits
        As of `convert`: a mosaic or a mono frame.
    look : str or Look, optional
        ``"auto"``, ``"linear"``, ``"srgb"`` or ``"astro"``; parts of a look that are given, such as
        ``"srgb,exposure=1.5"``; or a `Look`, such as `decide_look` returns.
    algorithm, format, region, edges, threshold, excess, align, orientation, threads, layout, out
        As of `convert`, and `stream`, `dark`, `flat` and `hot` too.
    binning : int, optional
        1 to 4: means of blocks of so many pixels either way become one pixel.
    dtype : dtype, optional
        uint8, uint16, or float32 from 0 to 1. All 16 bits of uint16 are significant.

    Returns
    -------
    numpy.ndarray
        As of `convert`. Colours are in the order red, green, blue.

    Raises
    ------
    InvalidValue, InvalidType
        A `ValueError` or `TypeError` that names the argument.

    Examples
    --------
    Gray under a sensor that sees little red, from black, 64, to a quarter of full scale:

    >>> light = numpy.repeat([0, 250, 500, 1000], 16)
    >>> raw = numpy.tile(light + 64, (48, 1)).astype(numpy.uint16)
    >>> raw[::2, ::2] = light[::2] / 2 + 64
    >>> vistrel.convert(raw, "rggb", bits=12)[20, 40].tolist()
    [19, 35, 35]
    >>> red, green, blue = vistrel.develop(raw, "rggb", bits=12)[20, 40].astype(int)
    >>> bool(max(red, green, blue) < 1.1 * min(red, green, blue) and green > 150)
    True
    """
    return _core.develop(*_arguments(look, raw, phase, bits, algorithm, format, region, binning,
                                     edges, threshold, excess, align, orientation, threads, layout,
                                     dtype, out, stream, dark, flat, hot))


def decide_look(raw: Samples, phase: str, bits: int | None = None, look: str | Look = "auto", *,
                region: Region = None, align: str = "low", dark: Samples = None,
                flat: Samples = None, hot: Samples = None) -> Look:
    """Decide how a frame should look, without developing it.

    Parameters
    ----------
    raw, phase, bits, look, region, align, dark, flat, hot
        As of `develop`.

    Returns
    -------
    Look
        All parts. A mono frame has neither gains nor matrix nor highlights. Passed to `develop`, it
        gives this frame the same picture, and other frames the same look.

    Raises
    ------
    InvalidValue, InvalidType
        A `ValueError` or `TypeError` that names the argument.

    Examples
    --------
    >>> raw = numpy.tile(numpy.arange(64, 1088, 16, numpy.uint16), (48, 1))
    >>> look = vistrel.decide_look(raw, "rggb", bits=12, look="srgb,black=200")
    >>> look.black, look.white, look.curve
    ((200, 200, 200, 200), 4095, 'srgb')
    >>> other = vistrel.develop(raw // 2 + 100, "rggb", bits=12, look=look)
    """
    return Look(**_core.decide(*_arguments(look, raw, phase, bits, "directional", None, region, 1,
                                           "padded", 0, "reject", align, 1, 1, "hwc", None, None,
                                           None, dark, flat, hot)))
