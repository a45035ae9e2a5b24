import enum
from typing import Any, NamedTuple

import numpy as np
from typing_extensions import Self

class _Name(str, enum.Enum):
    def __new__(cls, value: object) -> Self: ...

class Phase(_Name):
    GRBG = "grbg"
    BGGR = "bggr"
    RGGB = "rggb"
    GBRG = "gbrg"
    MONO = "mono"
    BGR = "bgr"

class Algorithm(_Name):
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

class FormatInfo(NamedTuple):
    name: Format
    channels: int
    dtype: np.dtype[Any]
    mono: bool
    planes: int

class AlgorithmInfo(NamedTuple):
    name: Algorithm
    max_bits: int
    min_size: int

def formats() -> list[FormatInfo]: ...
def algorithms() -> list[AlgorithmInfo]: ...
