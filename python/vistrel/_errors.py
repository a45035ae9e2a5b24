"""Exceptions: each is also one of Python's own, and carries the host layer's description."""

import enum

from . import _core

Status = enum.IntEnum(
    "Status",
    {name.removeprefix("VISTREL_"): code for name, code in _core.statuses().items()},
    module="vistrel",
)
Status.__doc__ = "Why a call was rejected. Values and names are those of the C interface."


class Error(Exception):
    """A rejected call. ``str()`` is "ARGUMENT VALUE: REASON".

    Attributes
    ----------
    code : Status
        An `int`, the same as in the C interface.
    argument, value, reason : str
        The parts of the text. `argument` and `value` may be empty.
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
    """A value that is not allowed, or not together with the others."""


class InvalidType(Error, TypeError):
    """An object, or an array's dtype, of the wrong type."""


class OutOfMemory(Error, MemoryError):
    """An allocation failed."""


class ConversionFailed(Error, RuntimeError):
    """A stream or a thread is not available."""


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
