import enum
from typing import Any

class Status(enum.IntEnum):
    OK = 0
    NULL_POINTER = 1
    BAD_SIZE = 2
    BAD_BITS = 3
    BAD_STRIDE = 4
    BAD_PHASE = 5
    BAD_FORMAT = 6
    BAD_ALGORITHM = 7
    BAD_BINNING = 8
    BAD_REGION = 9
    REGION_TOO_SMALL = 10
    BAD_REDUCTION = 11
    BAD_EXCESS = 12
    EXCESS_SAMPLE = 13
    TOO_LARGE = 14
    SHORT_BUFFER = 15
    OVERLAP = 16
    NO_MEMORY = 17
    INTERNAL = 18
    BAD_THRESHOLD = 19
    BAD_TRUNCATION = 20
    BAD_TABLE = 21
    BAD_GRAY = 22
    BAD_PACKING = 23
    BAD_RESERVED = 24
    BAD_ALIGNMENT = 25
    BAD_LEVEL = 26
    BAD_STREAM = 27
    NO_STREAM = 28
    BAD_WAIT = 29
    BAD_BLACK = 30
    BAD_BALANCE = 31
    BAD_EDGES = 32
    BUSY_STREAM = 33
    BAD_CONTINUOUS = 34
    BAD_WHITE = 35
    BAD_THREADS = 36
    BAD_TEAM = 37
    NO_THREAD = 38
    RUN_FAILED = 39
    BAD_ROWS = 40
    BAD_DESTINATION = 41
    BAD_FILTER = 42
    BAD_CALIBRATION = 43
    BAD_FINISH = 44
    BAD_ORIENTATION = 45
    BAD_TRANSFER = 46
    BAD_COUNT = 47

class Error(Exception):
    code: Status
    argument: str
    value: str
    reason: str
    def __init__(
        self, text: str, code: int, argument: str = ..., value: str = ..., reason: str = ...
    ) -> None: ...

class InvalidValue(Error, ValueError): ...
class InvalidType(Error, TypeError): ...
class OutOfMemory(Error, MemoryError): ...
class ConversionFailed(Error, RuntimeError): ...

def error_of(kind: str, *parts: Any) -> Error: ...
def rejection(kind: type[Error], code: int, argument: str, value: str, reason: str) -> Error: ...
