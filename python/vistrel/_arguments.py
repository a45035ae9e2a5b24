"""Arguments that Python reads itself, with the errors of the extension."""

from __future__ import annotations

import operator
import os
import typing

import numpy as np
import numpy.typing as npt

from ._errors import Error, InvalidType, InvalidValue, Status, rejection


def _error(kind: type[Error], code: Status, argument: str, value: object, allowed: str) -> Error:
    found = type(value).__name__ if kind is InvalidType else ascii(value)
    return rejection(kind, code, argument, found, allowed)


def integer_of(value: typing.Any, code: Status, argument: str) -> int:
    try:
        return operator.index(value)
    except TypeError:
        raise _error(InvalidType, code, argument, value, "an integer") from None


def size_of(shape: typing.Any) -> tuple[int, int]:
    """Height and width."""
    try:
        height, width = map(operator.index, shape)
    except (TypeError, ValueError) as error:
        kind = InvalidType if isinstance(error, TypeError) else InvalidValue
        raise _error(kind, Status.BAD_SIZE, "shape", shape, "(height, width)") from None
    return height, width


def array_of(value: typing.Any, code: Status, argument: str) -> npt.NDArray[typing.Any]:
    try:
        return np.asarray(value)
    except (TypeError, ValueError):
        raise _error(InvalidType, code, argument, value, "an array") from None


def points_of(points: typing.Any) -> typing.Any:
    """Pixels as the extension takes them: each one once, by rows and then columns."""
    if points is None:
        return None
    xy = array_of(points, Status.BAD_CALIBRATION, "hot")
    if xy.dtype.kind not in "ui" and xy.size:
        raise rejection(InvalidType, Status.BAD_CALIBRATION, "hot.dtype", str(xy.dtype), "integers")
    if xy.shape[1:] != (2,) and xy.size:
        raise rejection(InvalidValue, Status.BAD_CALIBRATION, "hot.shape", str(xy.shape), "(n, 2)")
    if xy.size and (xy.min() < 0 or xy.max() > 0xFFFFFFFF):
        raise rejection(InvalidValue, Status.BAD_CALIBRATION, "hot", "", "0 to 4294967295")
    yx = np.unique(xy.reshape(-1, 2)[:, ::-1], axis=0)
    return np.ascontiguousarray(yx[:, ::-1], np.uint32)


def bytes_of(buffer: typing.Any) -> memoryview:
    try:
        return memoryview(buffer).cast("B")
    except TypeError:
        raise _error(InvalidType, Status.NULL_POINTER, "buffer", buffer,
                     "an object with a buffer, its bytes side by side") from None


def path_of(path: typing.Any) -> bytes:
    """The name of a file, as the system has it."""
    try:
        name = os.fsencode(path)
    except TypeError:
        raise _error(InvalidType, Status.BAD_FORMAT, "path", path, "a str or a path") from None
    except UnicodeError:
        raise _error(InvalidValue, Status.BAD_FORMAT, "path", path,
                     "it contains a lone surrogate") from None
    if b"\0" in name:
        raise _error(InvalidValue, Status.BAD_FORMAT, "path", path,
                     "it contains a null character")
    return name


def handle_of(stream: typing.Any) -> typing.Any:
    """A stream as the extension takes it."""
    if stream is None:
        return None
    try:
        return stream._stream
    except AttributeError:
        raise _error(InvalidType, Status.BAD_STREAM, "stream", stream, "a Stream") from None
