"""The format of headerless raw files."""

from __future__ import annotations

import dataclasses
import typing

import numpy.typing as npt

from . import _core
from ._arguments import bytes_of
from ._conversion import unpack
from ._names import Phase


@dataclasses.dataclass(frozen=True)
class Guess:
    """What a headerless raw file may be.

    Attributes
    ----------
    score : float
        From 0 to 1; those of all guesses add up to 1.
    width, height : int
        Pixels of a frame.
    pixel_format : str
        A name that `unpack` takes.
    bits : int
        Significant bits in use. A dark frame may have more.
    align : {"low", "high"}
        Whether they are the lowest or the highest of a sample.
    stride : int or None
        Bytes from row to row; None: packed.
    continuous : bool
        Whether rows may begin within a byte.
    skip : int
        Bytes before the first frame.
    frames : int
        How many frames there are.
    trailing : int
        Bytes after the last frame.
    phases : tuple of Phase
        One for mono frames. Otherwise two: which sites are green is measured, not which of the
        others are red.

    Examples
    --------
    >>> best = vistrel.Guess(1.0, 2, 1, "BayerRG12p", 12, "low", None, False, 0, 1, 0, ())
    >>> best.unpack(bytes([0x34, 0x12, 0xAB])).tolist()
    [[564, 2737]]
    """

    score: float
    width: int
    height: int
    pixel_format: str
    bits: int
    align: str
    stride: int | None
    continuous: bool
    skip: int
    frames: int
    trailing: int
    phases: tuple[Phase, ...]

    def unpack(self, buffer: typing.Any) -> npt.NDArray[typing.Any]:
        """Unpack the first frame of a buffer, as `vistrel.unpack` does.

        Parameters
        ----------
        buffer : bytes-like
            All bytes of the file.

        Returns
        -------
        numpy.ndarray, shape (height, width)
            uint8 or uint16.

        Examples
        --------
        >>> guess = vistrel.Guess(1.0, 2, 1, "Mono8", 8, "low", None, False, 3, 1, 0, ())
        >>> guess.unpack(b"hdr" + bytes([5, 6])).tolist()
        [[5, 6]]
        """
        return unpack(bytes_of(buffer)[self.skip:], self.pixel_format, self.width, self.height, self.stride,
                      self.continuous)


def guess(buffer: typing.Any, size: typing.Sequence[int] | None = None) -> list[Guess]:
    """Guess the format of a headerless raw file from the similarity of its samples.

    Parameters
    ----------
    buffer : bytes-like
        All of its bytes.
    size : (int, int), optional
        Width and height in pixels, if they are known.

    Returns
    -------
    list of Guess
        The most likely ones, best first; none if nothing looks like a frame.

    Raises
    ------
    InvalidValue, InvalidType
        A `ValueError` or `TypeError` that names the argument.

    Examples
    --------
    >>> y, x = numpy.mgrid[:120, :160]
    >>> noise = numpy.random.default_rng(1).normal(0, 20, (120, 160))
    >>> raw = (2000 + 1500 * numpy.sin(x / 20 + y / 30) + noise).astype("<u2")
    >>> best = vistrel.guess(raw.tobytes())[0]
    >>> best.width, best.height, best.bits
    (160, 120, 12)
    >>> numpy.array_equal(best.unpack(raw.tobytes()), raw)
    True
    """
    return [Guess(**fields | {"phases": tuple(map(Phase, fields["phases"]))})
            for fields in _core.guess(buffer, size)]
