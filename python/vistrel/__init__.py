"""Raw camera frames to images, exact to the sample.

`convert` turns NumPy arrays of raw samples into arrays of pixels; `unpack` makes such arrays of
packed frames. `formats` and `algorithms` list what there is, `phase_at`, `flip` and `rotate` keep
phases right, and a `Stream` keeps a worker's memory.
"""

from . import _core
from ._conversion import Stream, convert, trim, unpack
from ._errors import ConversionFailed, Error, InvalidType, InvalidValue, OutOfMemory, Status
from ._names import Algorithm, AlgorithmInfo, Format, FormatInfo, Phase, algorithms, formats
from ._phases import cv2_code, flip, phase_at, rotate

__version__ = _core.version

__all__ = [
    "Algorithm",
    "AlgorithmInfo",
    "ConversionFailed",
    "Error",
    "Format",
    "FormatInfo",
    "InvalidType",
    "InvalidValue",
    "OutOfMemory",
    "Phase",
    "Status",
    "Stream",
    "algorithms",
    "convert",
    "cv2_code",
    "flip",
    "formats",
    "phase_at",
    "rotate",
    "trim",
    "unpack",
]
