"""Names of phases, formats and algorithms, and the tables of their properties."""

from __future__ import annotations

import enum
import typing

import numpy as np

from . import _core

if typing.TYPE_CHECKING:
    import typing_extensions


class _Name(str, enum.Enum):
    if typing.TYPE_CHECKING:
        def __new__(cls, value: object) -> typing_extensions.Self: ...

    def __str__(self) -> str:
        return str.__str__(self)

    def __format__(self, form: str) -> str:
        return str.__format__(self, form)


class Phase(_Name):
    """The mosaic's 2x2 block at the first pixel, row by row. Members equal their `str`.

    Examples
    --------
    >>> vistrel.Phase.RGGB == "rggb", len(vistrel.Phase)
    (True, 6)
    """

    GRBG = "grbg"
    BGGR = "bggr"
    RGGB = "rggb"
    GBRG = "gbrg"
    MONO = "mono"
    BGR = "bgr"


class Algorithm(_Name):
    """Demosaic algorithms. Members equal their `str`.

    Examples
    --------
    >>> vistrel.Algorithm("vng").name, vistrel.Algorithm.AHD == "ahd"
    ('VNG', True)
    """

    BILINEAR = "bilinear"
    EDGE = "edge"
    NEAR = "near"
    LAROCHE = "laroche"
    HAMILTON = "hamilton"
    VNG = "vng"
    COK = "cok"
    KIMMEL = "kimmel"
    GROUPING = "grouping"
    AHD = "ahd"
    DIRECTIONAL = "directional"


class Format(_Name):
    """Pixel formats. Members equal their `str`. The order of the letters is that in memory.

    Examples
    --------
    >>> raw = numpy.full((8, 8), 7, numpy.uint8)
    >>> vistrel.convert(raw, "rggb", format=vistrel.Format.RGBA32).shape
    (8, 8, 4)
    """

    MONO8 = "mono8"
    MONO16 = "mono16"
    BGR24 = "bgr24"
    ARGB32 = "argb32"
    ARGB32_4 = "argb32_4"
    GRAY8 = "gray8"
    GRAY16 = "gray16"
    BGR48 = "bgr48"
    RGB24 = "rgb24"
    BGRA32 = "bgra32"
    RGBA32 = "rgba32"
    RGB48 = "rgb48"
    RGB24_PLANAR = "rgb24_planar"
    RGB48_PLANAR = "rgb48_planar"
    NV12 = "nv12"
    I420 = "i420"
    I444 = "i444"


class FormatInfo(typing.NamedTuple):
    """A pixel format, as `formats` lists it.

    Attributes
    ----------
    name : Format
    channels : int
        Samples per pixel: 1, 3 or 4.
    dtype : numpy.dtype
        Of a sample: uint8 or uint16.
    mono : bool
        Whether it is for frames without colour filters.
    planes : int
        1 to 3.

    Examples
    --------
    >>> next(f for f in vistrel.formats() if f.name == "rgb48_planar")[1:]
    (3, dtype('uint16'), False, 3)
    """

    name: Format
    channels: int
    dtype: np.dtype[typing.Any]
    mono: bool
    planes: int


class AlgorithmInfo(typing.NamedTuple):
    """A demosaic algorithm, as `algorithms` lists it.

    Attributes
    ----------
    name : Algorithm
    max_bits : int
        The most significant bits that a sample may have.
    min_size : int
        The smallest width and height of a region in pixels, with ``edges="native"``.

    Examples
    --------
    >>> next(a for a in vistrel.algorithms() if a.name == "cok").max_bits
    10
    """

    name: Algorithm
    max_bits: int
    min_size: int


def formats() -> list[FormatInfo]:
    """List the pixel formats.

    Returns
    -------
    list of FormatInfo
        Name, samples per pixel, `numpy.dtype` of a sample, whether it is for frames without colour
        filters, and the number of planes.

    Examples
    --------
    >>> [f.name.value for f in vistrel.formats() if f.mono]
    ['mono8', 'mono16']
    """
    return [
        FormatInfo(Format(name.lower()), channels, np.dtype(f"u{size}"), mono, planes)
        for name, channels, size, mono, planes in _core.formats()
    ]


def algorithms() -> list[AlgorithmInfo]:
    """List the demosaic algorithms.

    Returns
    -------
    list of AlgorithmInfo
        Name, the most significant bits that a sample may have, and the smallest width and height
        of a region in pixels, which ``edges="padded"`` lowers to 2.

    Examples
    --------
    >>> {a.name.value: a.max_bits for a in vistrel.algorithms()}["ahd"]
    16
    """
    return [
        AlgorithmInfo(Algorithm(name), bits, size) for name, bits, size in _core.algorithms()
    ]
