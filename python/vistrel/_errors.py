"""Exceptions: each is also one of Python's own, and carries the host layer's description."""

import enum

from . import _core

Status = enum.IntEnum(
    "Status",
    {name.removeprefix("VISTREL_"): code for name, code in _core.statuses().items()},
    module="vistrel",
)
Status.__doc__ = """Why a call was rejected. Values and names are those of the C interface.

Examples
--------
>>> vistrel.Status.OK == 0, vistrel.Status.BAD_PHASE.name
(True, 'BAD_PHASE')
"""


class Error(Exception):
    """A rejected call. ``str()`` is "ARGUMENT VALUE: REASON".

    Attributes
    ----------
    code : Status
        An `int`, the same as in the C interface.
    argument : str
        Which one, such as ``"phase"``. May be empty.
    value : str
        What it was. May be empty.
    reason : str
        What is wrong with it, or what is allowed.

    Examples
    --------
    >>> try:
    ...     vistrel.phase_at("rgbg", 0, 0)
    ... except vistrel.Error as error:
    ...     print(error.code.name, error.argument, error.value)
    BAD_PHASE phase rgbg
    """

    def __init__(self, text, code, argument="", value="", reason=""):
        super().__init__(text, code, argument, value, reason)
        self.code = Status(code)
        self.argument = argument
        self.value = value
        self.reason = reason

    def __str__(self):
        return self.args[0]


class InvalidValue(Error, ValueError):
    """A value that is not allowed, or not together with the others.

    Examples
    --------
    >>> try:
    ...     vistrel.convert(numpy.zeros((8, 8), numpy.uint8), "rggb", binning=5)
    ... except vistrel.InvalidValue as error:
    ...     print(error)
    conversion.binning 5: 1 to 4 are allowed
    """


class InvalidType(Error, TypeError):
    """An object, or an array's dtype, of the wrong type.

    Examples
    --------
    >>> issubclass(vistrel.InvalidType, TypeError)
    True
    >>> try:
    ...     vistrel.convert(numpy.zeros((8, 8), complex), "rggb")
    ... except vistrel.InvalidType as error:
    ...     print(error)
    raw.dtype complex128: uint8 or uint16
    """


class OutOfMemory(Error, MemoryError):
    """An allocation failed.

    Examples
    --------
    >>> issubclass(vistrel.OutOfMemory, MemoryError)
    True
    """


class ConversionFailed(Error, RuntimeError):
    """A stream or a thread is not available.

    Examples
    --------
    >>> streams = [vistrel.Stream() for _ in range(128)]
    >>> try:
    ...     vistrel.Stream(wait=False)
    ... except vistrel.ConversionFailed as error:
    ...     print(error.code.name)
    NO_STREAM
    >>> for stream in streams:
    ...     stream.release()
    """


_KINDS = {
    "value": InvalidValue,
    "type": InvalidType,
    "memory": OutOfMemory,
    "runtime": ConversionFailed,
}


def rejection(kind, code, argument, value, reason):
    """An exception to raise, whose text is composed as the host layer does."""
    subject = f"{argument} {value}" if value else argument
    return kind(f"{subject}: {reason}", code, argument, value, reason)


def error_of(kind, *parts):
    """For the extension module: an exception to raise."""
    return _KINDS[kind](*parts)
