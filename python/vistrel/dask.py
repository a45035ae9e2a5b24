"""Many frames on many machines: `vistrel` for chunked arrays and for files, by Dask.

Everything is lazy. A chunk is some whole frames; each task makes those of one chunk, without
Python's lock, so the threads of a worker share its processors. Tasks depend on nothing but their
frames and options: one that is lost with its worker is repeated elsewhere, with the same bytes.
"""

from __future__ import annotations

import collections.abc
import hashlib
import os
import tempfile
import typing

import dask.array as da
import numpy as np
import numpy.typing as npt

import vistrel

from ._development import text_of
from ._errors import Error, InvalidType, InvalidValue, Status, rejection
from ._frames import Path

__all__ = ["REPORT", "convert", "convert_files", "develop", "unpack"]

#: What `convert_files` reports of each picture. Without an error, that is empty.
REPORT = np.dtype([("made", "?"), ("bytes", "u8"), ("sha256", "S64"), ("error", "U200")])

# Of a file. They are reported, and the other files made.
_FAILURES: tuple[type[Exception], ...] = (Error, OSError, ImportError)

_Array = npt.NDArray[typing.Any]
_Function = typing.Callable[..., _Array]


def _convert(raw: _Array, options: dict[str, typing.Any], **more: typing.Any) -> _Array:
    return vistrel.convert(raw, **options, **more)


def _develop(raw: _Array, options: dict[str, typing.Any], **more: typing.Any) -> _Array:
    return vistrel.develop(raw, **options, **more)


def _each(block: _Array, function: _Function, options: dict[str, typing.Any],
          shape: tuple[int, ...], image_dtype: npt.DTypeLike) -> _Array:
    """The images of a chunk's frames."""
    images = np.empty((len(block), *shape), image_dtype)
    with vistrel.Stream() as stream:
        for raw, image in zip(block, images):
            function(raw, options, out=image, stream=stream)
    return images


def _check(frames: typing.Any, argument: str, shape: tuple[str, ...]) -> None:
    if not isinstance(frames, da.Array):
        raise rejection(InvalidType, Status.NULL_POINTER, argument, type(frames).__name__,
                        "a dask.array.Array: see dask.array.from_array")
    if frames.ndim != len(shape):
        raise rejection(InvalidValue, Status.BAD_SIZE, f"{argument}.shape", str(frames.shape),
                        f"({', '.join(shape)})")


def _images(frames: typing.Any, function: _Function, options: dict[str, typing.Any]) -> da.Array:
    _check(frames, "frames", ("n", "height", "width"))
    # A frame of zeros has the shape and the dtype of all, and shows what is wrong with options.
    image = function(np.zeros(frames.shape[1:], frames.dtype), options)
    return _mapped(frames, _each, image, function=function, options=options)


def _mapped(frames: typing.Any, work: _Function, image: _Array, **arguments: typing.Any
            ) -> da.Array:
    """One image of each frame, in chunks of whole frames."""
    whole = frames.rechunk({axis: -1 for axis in range(1, frames.ndim)})
    chunks = (whole.chunks[0], *((size,) for size in image.shape))
    return da.map_blocks(work, whole, dtype=image.dtype, chunks=chunks,
                         drop_axis=list(range(1, whole.ndim)),
                         new_axis=list(range(1, image.ndim + 1)),
                         meta=np.empty((0,) * (image.ndim + 1), image.dtype),
                         shape=image.shape, image_dtype=image.dtype, **arguments)


def convert(frames: typing.Any, phase: str, bits: int | None = None, **options: typing.Any
            ) -> da.Array:
    """Convert a chunked array of raw frames.

    Parameters
    ----------
    frames : dask.array.Array, shape (n, height, width)
        uint8 or uint16. Chunks that divide frames are joined.
    phase, bits
        As of `vistrel.convert`.
    **options
        Those of `vistrel.convert`, but for `out` and `stream`.

    Returns
    -------
    dask.array.Array, shape (n, ...)
        Images of the shape and dtype that `vistrel.convert` gives, in as many chunks as there are
        of frames.

    Raises
    ------
    InvalidValue, InvalidType
        At once, if options are not allowed; by the computation, if samples are not.

    Examples
    --------
    >>> frames = dask.array.full((100, 48, 64), 2048, dtype="uint16", chunks=(10, 48, 64))
    >>> images = vistrel.dask.convert(frames, "rggb", bits=12, algorithm="ahd")
    >>> images.shape, images.dtype, images.numblocks
    ((100, 48, 64, 3), dtype('uint8'), (10, 1, 1, 1))
    >>> images[42, 5, 5].compute(scheduler="threads").tolist()
    [128, 128, 128]
    """
    return _images(frames, _convert, {"phase": phase, "bits": bits} | options)


def develop(frames: typing.Any, phase: str, bits: int | None = None,
            look: str | vistrel.Look = "auto", **options: typing.Any) -> da.Array:
    """Develop a chunked array of raw frames.

    Parameters
    ----------
    frames : dask.array.Array, shape (n, height, width)
        As of `convert`.
    phase, bits, look
        As of `vistrel.develop`. Parts that `look` leaves open are decided for each frame by itself;
        ``vistrel.decide_look(frames[0].compute(), ...)`` gives all of them the look of the first.
    **options
        Those of `vistrel.develop`, but for `out` and `stream`.

    Returns
    -------
    dask.array.Array, shape (n, ...)
        As of `convert`.

    Raises
    ------
    InvalidValue, InvalidType
        As of `convert`.

    Examples
    --------
    >>> frames = dask.array.full((100, 48, 64), 1000, dtype="uint16", chunks=(10, 48, 64))
    >>> vistrel.dask.develop(frames, "rggb", bits=12, dtype="float32").dtype
    dtype('float32')
    """
    return _images(frames, _develop, {"phase": phase, "bits": bits, "look": text_of(look)} | options)


def _unpack_each(block: _Array, options: dict[str, typing.Any], shape: tuple[int, ...],
                 image_dtype: npt.DTypeLike) -> _Array:
    samples = np.empty((len(block), *shape), image_dtype)
    for packed, frame in zip(block, samples):
        frame[:] = vistrel.unpack(np.ascontiguousarray(packed), **options)
    return samples


def unpack(packed: typing.Any, pixel_format: str, width: int, height: int,
           stride: int | None = None, continuous: bool = False) -> da.Array:
    """Unpack a chunked array of packed frames.

    Parameters
    ----------
    packed : dask.array.Array, shape (n, bytes), uint8
        A frame in each row.
    pixel_format, width, height, stride, continuous
        As of `vistrel.unpack`.

    Returns
    -------
    dask.array.Array, shape (n, height, width)
        Frames for `convert` and `develop`.

    Raises
    ------
    InvalidValue, InvalidType
        At once.

    Examples
    --------
    >>> packed = dask.array.zeros((100, 48 * 96), dtype="uint8", chunks=(10, -1))
    >>> vistrel.dask.unpack(packed, "BayerRG12p", 64, 48)
    dask.array<_unpack_each, shape=(100, 48, 64), dtype=uint16, chunksize=(10, 48, 64), \
chunktype=numpy.ndarray>
    """
    _check(packed, "packed", ("n", "bytes"))
    options: dict[str, typing.Any] = {
        "pixel_format": pixel_format, "width": width, "height": height, "stride": stride,
        "continuous": continuous}
    frame = vistrel.unpack(np.zeros(packed.shape[1], packed.dtype), **options)
    return _mapped(packed, _unpack_each, frame, options=options)


def _inputs(manifest: Path | collections.abc.Iterable[Path]) -> list[str]:
    if isinstance(manifest, (str, os.PathLike)):
        with open(manifest, encoding="utf-8", errors="surrogateescape") as lines:
            return [line for line in lines.read().splitlines() if line]
    return [os.fspath(path) for path in manifest]


def _outputs(inputs: list[str], out: str, kind: str) -> list[str]:
    names = [os.path.splitext(os.path.basename(path))[0] + "." + kind for path in inputs]
    seen: dict[str, str] = {}
    for name, path in zip(names, inputs):
        if name in seen:
            raise rejection(InvalidValue, Status.OVERLAP, "manifest", path,
                            f"{seen[name]} has the same output, {name}")
        seen[name] = path
    return [os.path.join(out, name) for name in names]


def _make(source: str, to: str, reading: dict[str, typing.Any], developed: bool,
          options: dict[str, typing.Any]) -> None:
    frame = vistrel.read(source, **reading)
    image = frame.develop(**options) if developed else frame.convert(**options)
    vistrel.write(to, image, encoding="unknown" if developed else "linear")


def _row(source: str, to: str, **arguments: typing.Any) -> tuple[bool, int, bytes, str]:
    """Of the report. Pictures that are not older than their frames are left alone."""
    try:
        made = not (os.path.exists(to) and os.path.getmtime(to) >= os.path.getmtime(source))
        if made:
            _make(source, to, **arguments)
        with open(to, "rb") as file:
            data = file.read()
    except _FAILURES as error:
        return False, 0, b"", str(error)
    return made, len(data), hashlib.sha256(data).hexdigest().encode(), ""


def _rows(jobs: _Array, **arguments: typing.Any) -> _Array:
    return np.array([_row(source, to, **arguments) for source, to in jobs], REPORT)


def _try(inputs: list[str], kind: str, reading: dict[str, typing.Any],
         **arguments: typing.Any) -> None:
    """Make a picture of the first frame that can be read, to show what is wrong with options."""
    for source in inputs:
        try:
            vistrel.read(source, **reading)
        except _FAILURES as error:
            if isinstance(error, Error) and error.argument in reading:
                raise
            continue
        with tempfile.TemporaryDirectory() as folder:
            try:
                _make(source, os.path.join(folder, f"frame.{kind}"), reading, **arguments)
            except Error as error:
                if error.code == Status.EXCESS_SAMPLE:
                    continue
                raise
        return


def convert_files(manifest: Path | collections.abc.Iterable[Path], out: Path, *,
                  kind: str = "png", read: dict[str, typing.Any] | None = None,
                  develop: bool = False, chunk: int = 16, **options: typing.Any) -> da.Array:
    """Convert files of frames to pictures in a folder that all workers see.

    A picture appears complete or not at all, and one that is not older than its frame is not
    made again. So a computation that failed, or lost workers, is simply computed again. Other options
    want another folder. What killed workers left of unfinished pictures, the next call removes.

    The first frame that can be read is made at once, in a folder for temporary files, to check the
    options. Names that are relative are those that they are for the caller, not for the workers.

    Parameters
    ----------
    manifest : path, or iterable of paths
        The inputs; or a text file with one in each line.
    out : path
        An existing folder. An input's name with the extension `kind` is that of its picture.
    kind : str, optional
        Type of the pictures, as of `vistrel.write`.
    read : dict, optional
        Options of `vistrel.read` for all inputs, such as ``{"from_name": True}``.
    develop : bool, optional
        Develop the frames, as `vistrel.develop` does, rather than convert them.
    chunk : int, optional
        Pictures of a task.
    **options
        Those of `vistrel.convert` or `vistrel.develop`.

    Returns
    -------
    dask.array.Array, shape (n,), dtype REPORT
        To be computed: whether the picture was made, its file's bytes and SHA-256; or what is wrong
        with the frame, or its file, as ``error``. The others are made all the same.

    Raises
    ------
    InvalidValue, InvalidType
        At once: options are not allowed, or two pictures would have the same name.

    Examples
    --------
    >>> for name in ("a", "b", "c"):
    ...     vistrel.write(f"{name}.pgm", numpy.full((48, 64), 99, numpy.uint8), phase="rggb")
    >>> os.mkdir("pictures")
    >>> report = vistrel.dask.convert_files(["a.pgm", "b.pgm", "c.pgm"], "pictures",
    ...                                     read={"phase": "rggb"}, algorithm="ahd")
    >>> rows = report.compute(scheduler="threads")
    >>> rows["made"].tolist(), len(set(rows["sha256"]))
    ([True, True, True], 1)
    >>> report.compute(scheduler="threads")["made"].tolist()
    [False, False, False]
    """
    from . import _files

    _files.remove_stale_files(os.fsencode(out))
    inputs = _inputs(manifest)
    arguments: dict[str, typing.Any] = {"reading": read or {}, "developed": develop,
                                        "options": options}
    jobs = np.empty((len(inputs), 2), object)
    jobs[:, 1] = _outputs(inputs, os.path.abspath(out), kind)
    jobs[:, 0] = [os.path.abspath(path) for path in inputs]
    _try(inputs, kind, **arguments)
    return da.map_blocks(_rows, da.from_array(jobs, chunks=(chunk, 2)), dtype=REPORT,
                         drop_axis=1, meta=np.empty(0, REPORT), **arguments)
