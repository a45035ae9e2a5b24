"""Raw camera frames to images, exact to the sample.

`convert` turns NumPy arrays of raw samples into arrays of pixels, `develop` into pictures for the
eye; `unpack` makes such arrays of packed frames, whose format `guess` finds; `read` and `write` are
for files. `formats` and `algorithms` list what there is, `phase_at`, `flip` and `rotate` keep
phases right, and a `Stream` keeps a worker's memory.
"""

from . import _core
from ._conversion import Stream, convert, trim, unpack
from ._development import Look, decide_look, develop
from ._errors import ConversionFailed, Error, InvalidType, InvalidValue, OutOfMemory, Status
from ._frames import Frame, read, write
from ._guessing import Guess, guess
from ._names import Algorithm, AlgorithmInfo, Format, FormatInfo, Phase, algorithms, formats
from ._phases import cv2_code, flip, phase_at, rotate

__version__: str = _core.version

__all__ = [
    "Algorithm",
    "AlgorithmInfo",
    "ConversionFailed",
    "Error",
    "Format",
    "FormatInfo",
    "Frame",
    "Guess",
    "InvalidType",
    "InvalidValue",
    "Look",
    "OutOfMemory",
    "Phase",
    "Status",
    "Stream",
    "algorithms",
    "convert",
    "cv2_code",
    "decide_look",
    "develop",
    "flip",
    "formats",
    "guess",
    "phase_at",
    "read",
    "rotate",
    "trim",
    "unpack",
    "write",
]
