"""Frames and pictures in files."""

from __future__ import annotations

import dataclasses
import errno
import os
import typing
import warnings

import numpy as np
import numpy.typing as npt

from ._arguments import array_of, integer_of, path_of
from ._conversion import convert
from ._development import Look, develop, text_of
from ._errors import InvalidType, InvalidValue, Status, rejection
from ._names import Phase

Path = typing.Union[str, "os.PathLike[str]"]


@dataclasses.dataclass(frozen=True, eq=False)
class Frame:
    """A raw frame with what its file says about it, as `read` returns it.

    Attributes
    ----------
    samples : numpy.ndarray, shape (height, width)
        uint8 or uint16.
    phase : Phase or None
        None if the file does not specify it.
    bits : int
        Significant bits of a sample.
    align : {"low", "high"}
        Whether they are the lowest or the highest.
    format : str
        Kind of the file, such as ``"TIFF"``.
    frames : int
        How many frames the file has.
    look : Look
        What the file says about levels and colours.
    orientation : int
        How to turn the image, 1 to 8 as in TIFF and EXIF.
    crop : (int, int, int, int) or None
        x, y, width and height of the part that the maker wants to be seen.
    camera : dict
        make, model, date, exposure_time in seconds, iso, gain, aperture, focal_length in
        millimetres, and temperature, that of the light in kelvins. None where unknown.

    Examples
    --------
    >>> vistrel.write("wall.dng", numpy.full((48, 64), 900, numpy.uint16), bits=12, phase="grbg")
    >>> frame = vistrel.read("wall.dng")
    >>> frame.phase.value, frame.bits, frame.look.white, frame.convert(format="gray8").shape
    ('grbg', 12, 4095, (48, 64))
    """

    samples: npt.NDArray[typing.Any]
    phase: Phase | None
    bits: int
    align: typing.Literal["low", "high"]
    format: str
    frames: int
    look: Look
    orientation: int
    crop: tuple[int, int, int, int] | None
    camera: dict[str, typing.Any]

    def _phase(self) -> Phase:
        if self.phase is None:
            raise rejection(InvalidValue, Status.BAD_PHASE, "phase", "",
                            "the file does not specify it; pass it to read")
        return self.phase

    def convert(self, **options: typing.Any) -> npt.NDArray[typing.Any]:
        """Convert it, as `vistrel.convert` does: nothing of what the file says is applied.

        Parameters
        ----------
        **options
            Those of `vistrel.convert`, but for `phase`, `bits` and `align`.

        Returns
        -------
        numpy.ndarray

        Examples
        --------
        >>> vistrel.write("gray.pgm", numpy.full((6, 8), 30, numpy.uint8))
        >>> vistrel.read("gray.pgm", phase="rggb").convert(binning=2).shape
        (3, 4, 3)
        """
        return convert(self.samples, self._phase(), self.bits, align=self.align, **options)

    def develop(self, look: str | Look = "auto", **options: typing.Any) -> npt.NDArray[typing.Any]:
        """Develop it, as ``vistrel develop`` does with the file.

        What the file says about levels, colours, orientation and crop is applied, unless `look` or
        the options of `vistrel.develop` say something else.

        Parameters
        ----------
        look : str or Look, optional
            As `vistrel.develop` takes it.
        **options
            Those of `vistrel.develop`, but for `phase`, `bits` and `align`.

        Returns
        -------
        numpy.ndarray

        Examples
        --------
        >>> vistrel.write("dim.pgm", numpy.full((6, 8), 30, numpy.uint8))
        >>> frame = vistrel.read("dim.pgm", phase="rggb")
        >>> int(frame.develop("srgb,black=0,gains=1:1:1,exposure=1")[0, 0, 0])
        96
        """
        text = text_of(look)
        names = [part.partition("=")[0] for part in text.split(",")]
        known = {name: None for name in names if name in self.look._parts()}
        rest = dataclasses.replace(self._look_above(options.get("dark")), **known)
        if rest != Look():
            text += f",{rest}"
        options = {"orientation": self.orientation, "region": self._part()} | options
        return develop(self.samples, self._phase(), self.bits, text, align=self.align, **options)

    def _look_above(self, dark: typing.Any) -> Look:
        """What the file says, with levels above those of a frame without light."""
        white = self.look.white
        if dark is None or white is None:
            return self.look if dark is None else dataclasses.replace(self.look, black=None)
        samples = array_of(dark, Status.BAD_CALIBRATION, "dark")
        shift = 16 - self.bits if self.align == "high" else 0
        level = int(np.floor(np.mean(samples >> shift) + 0.5))
        return dataclasses.replace(self.look, black=None, white=max(white - level, 1))

    def _part(self) -> tuple[int, int, int, int] | None:
        height, width = self.samples.shape
        return None if self.crop is None or self.crop[2:] == (width, height) else self.crop


def read(path: Path, phase: str | None = None, bits: int | None = None, *, frame: int = 0,
         align: str = "low", from_name: bool = False, size: typing.Sequence[int] | None = None,
         pixel_format: str | None = None, byte_order: str = "little", skip: int = 0,
         stride: int | None = None, continuous: bool = False,
         range: typing.Sequence[float] | None = None) -> Frame:
    """Read a raw frame: PGM, PNG, TIFF, DNG; FITS and camera raw files; or headerless.

    Messages about the file, such as a phase that contradicts it, are issued as `UserWarning`.

    Parameters
    ----------
    path : str or path-like
        The file.
    phase : str or Phase, optional
        In place of what the file says.
    bits : int, optional
        Significant bits, in place of what the file says.
    frame : int, optional
        Which frame of the file, counted from 0.
    align : {"low", "high"}, optional
        Which bits of 16-bit samples are significant.
    from_name : bool, optional
        Take bits and phase from a name such as ``rose_12b_rggb.pgm``.
    size : (int, int), optional
        Width and height of a headerless raw file. The parameters below, but for `range`, describe
        such a file too; `guess` finds them.
    pixel_format : str, optional
        Any name that ``vistrel formats`` prints. Without one, samples of `bits` bits are bytes or
        16-bit words.
    byte_order : {"little", "big"}, optional
        Of 16-bit words.
    skip, stride : int, optional
        Bytes before the first sample, and from row to row.
    continuous : bool, optional
        Rows may begin within a byte.
    range : (float, float), optional
        Values of a FITS of real numbers that become 0 and 65535.

    Returns
    -------
    Frame

    Raises
    ------
    OSError
        The file can't be read.
    InvalidValue, InvalidType
        It is not a frame, or an argument is not allowed.
    ImportError
        FITS or camera raw, without the Debian package python3-vistrel.

    Examples
    --------
    >>> samples = numpy.full((48, 64), 1000, numpy.uint16)
    >>> vistrel.write("rose.dng", samples, bits=12, phase="rggb", black=(64, 64, 64, 64))
    >>> frame = vistrel.read("rose.dng")
    >>> frame.phase.value, frame.bits, frame.look.black
    ('rggb', 12, (64, 64, 64, 64))
    >>> frame.develop(dtype="float32").shape
    (48, 64, 3)
    """
    from . import _files

    name = path_of(path)
    if not os.path.exists(name):
        raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), path)
    fields, messages = _files.read(name, phase, bits, frame, align, from_name, size,
                                   pixel_format, byte_order, skip, stride, continuous, range)
    for message in messages:
        warnings.warn(f"{os.fsdecode(name)}: {message}", stacklevel=2)
    named = {"phase": fields["phase"] and Phase(fields["phase"]), "look": Look(**fields["look"])}
    return Frame(**fields | named)


def _picture(image: npt.NDArray[typing.Any], bits: int | None) -> tuple[typing.Any, int]:
    """The samples as files have them, and their significant bits."""
    image = array_of(image, Status.BAD_FORMAT, "image")
    if image.dtype.kind != "u" or image.itemsize > 2:
        raise rejection(InvalidType, Status.BAD_FORMAT, "image.dtype", str(image.dtype),
                        "uint8 or uint16")
    if image.ndim not in (2, 3) or image.shape[2:] not in ((), (3,), (4,)) or not image.size:
        raise rejection(InvalidValue, Status.BAD_SIZE, "image.shape", str(image.shape),
                        "(height, width), or with 3 or 4 channels")
    stored = 8 * image.itemsize
    bits = stored if bits is None else integer_of(bits, Status.BAD_BITS, "bits")
    least = 8 if stored == 8 else 9
    if not least <= bits <= stored:
        raise rejection(InvalidValue, Status.BAD_BITS, "bits", str(bits),
                        f"samples of {image.dtype} have {least} to {stored}")
    if bits < stored and image.max() >> bits:
        raise rejection(InvalidValue, Status.EXCESS_SAMPLE, "image", "",
                        f"a sample has more than {bits} bits")
    return np.ascontiguousarray(image, image.dtype.newbyteorder("=")), bits


def _camera_colours(look: Look) -> tuple[list[float] | None, list[float] | None]:
    """The camera's colours of a neutral object, and its matrix from linear sRGB."""
    if look.gains is None:
        return None, None
    neutral = min(look.gains) / np.array(look.gains)
    if look.matrix is None:
        return neutral.tolist(), None
    try:
        from_srgb = neutral[:, None] * np.linalg.inv(np.reshape(look.matrix, (3, 3)))
    except np.linalg.LinAlgError:
        raise rejection(InvalidValue, Status.BAD_FINISH, "look.matrix", str(look.matrix),
                        "it has no inverse") from None
    return neutral.tolist(), from_srgb.ravel().tolist()


def write(path: Path, image: npt.NDArray[typing.Any], bits: int | None = None, *,
          phase: str | None = None, black: typing.Sequence[int] | None = None,
          white: int | None = None, encoding: str = "unknown", look: Look | None = None) -> None:
    """Write a picture, or a raw frame. The file appears complete or not at all.

    Parameters
    ----------
    path : str or path-like
        Its extension is the type: png, jpg, tif, pam, ppm, pgm, npy, raw, or dng for a frame.
    image : array, shape (height, width), or (height, width, 3 or 4), uint8 or uint16
        Colours in the order red, green, blue, alpha.
    bits : int, optional
        Significant bits of a sample: those of the dtype if left out.
    phase : str or Phase, optional
        Of a raw frame, which can be a dng, pgm, png, npy or raw.
    black : 4 ints, optional
        Levels of the 2x2 block of a dng, row by row: those of `look`, or else 0.
    white : int, optional
        Where the sensor of a dng clips: that of `look`, or else the largest value of `bits`.
    encoding : {"unknown", "linear", "srgb"}, optional
        How values follow from light, for types that can say so: pictures of `convert` are linear,
        those of `develop` mostly srgb.
    look : Look, optional
        What a dng says about the camera: black, white, gains and matrix of such a look, as that of
        a `Frame`. Without gains and a matrix, the camera's colours are those of sRGB.

    Raises
    ------
    OSError
        The file can't be written.
    InvalidValue, InvalidType
        The type can't hold the image, or an argument is not allowed.

    Examples
    --------
    >>> vistrel.write("red.png", numpy.full((4, 6, 3), (200, 0, 0), numpy.uint8))
    >>> look = vistrel.Look(gains=(2, 1, 1.5), matrix=(1.5, -.25, -.25, 0, 1, 0, 0, -.5, 1.5))
    >>> raw = numpy.full((48, 64), 900, numpy.uint16)
    >>> vistrel.write("camera.dng", raw, bits=12, phase="rggb", look=look)
    >>> vistrel.read("camera.dng").look.gains
    (2.0, 1.0, 1.5)
    """
    from . import _files

    name = path_of(path)
    samples, bits = _picture(image, bits)
    look = Look() if look is None else look
    if not isinstance(look, Look):
        raise rejection(InvalidType, Status.BAD_FINISH, "look", type(look).__name__, "a Look")
    if black is None:
        black = look.black if isinstance(look.black, tuple) else (look.black or 0,) * 4
    _files.write(name, samples, bits, phase, black, look.white if white is None else white,
                 encoding, *_camera_colours(look))
