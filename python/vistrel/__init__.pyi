from ._conversion import Stream as Stream
from ._conversion import convert as convert
from ._conversion import trim as trim
from ._conversion import unpack as unpack
from ._errors import ConversionFailed as ConversionFailed
from ._errors import Error as Error
from ._errors import InvalidType as InvalidType
from ._errors import InvalidValue as InvalidValue
from ._errors import OutOfMemory as OutOfMemory
from ._errors import Status as Status
from ._names import Algorithm as Algorithm
from ._names import AlgorithmInfo as AlgorithmInfo
from ._names import Format as Format
from ._names import FormatInfo as FormatInfo
from ._names import Phase as Phase
from ._names import algorithms as algorithms
from ._names import formats as formats
from ._phases import cv2_code as cv2_code
from ._phases import flip as flip
from ._phases import phase_at as phase_at
from ._phases import rotate as rotate

__version__: str
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
