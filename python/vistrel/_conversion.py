"""Frames to images, and packed frames to samples."""

import time

import numpy as np

from . import _core
from ._arguments import array_of, handle_of, points_of
from ._errors import ConversionFailed, InvalidType, InvalidValue, Status, rejection


def _table_of(table):
    """The values as the extension takes them: uint16, side by side."""
    values = array_of(table, Status.BAD_TABLE, "table")
    if values.dtype.kind not in "ui" or values.ndim != 1:
        what = f"{values.dtype}, {values.ndim} dimensions"
        raise rejection(InvalidType, Status.BAD_TABLE, "table", what, "one dimension of integers")
    if values.size and (values.min() < 0 or values.max() > 65535):
        raise rejection(InvalidValue, Status.BAD_TABLE, "table", "", "values are 0 to 255")
    return np.ascontiguousarray(values, np.uint16)


def convert(raw, phase, bits=None, algorithm="bilinear", format=None, *, region=None, binning=1,
            bin_mode="sum", window=0, curve=None, table=None, black=None, white=None, gains=None,
            edges="native", threshold=0, gray="luma", truncate_to=None, excess="reject",
            align="low", orientation=1, threads=1, layout="hwc", dtype=None, out=None,
            stream=None, dark=None, flat=None, hot=None):
    """Convert a raw frame to an image, exact to the sample.

    The result is linear: nothing is subtracted or amplified unless you ask for it. Colours are in
    the order **red, green, blue**; OpenCV expects ``format="bgr24"``.

    Parameters
    ----------
    raw : array, shape (height, width), uint8 or uint16
        Samples, from an array or anything that offers one by the buffer protocol or
        ``__array_interface__``. Slices and crops, read-only arrays and foreign byte order cost no
        copy; negative row strides do. Within a row, samples lie side by side. With phase
        ``"bgr"``, finished pixels of shape (height, width, 3).
    phase : str or Phase
        The mosaic's 2x2 block at ``raw[0, 0]``, row by row, or ``"mono"``. See `phase_at`.
    bits : int, optional
        Significant bits of a sample, 8 to 16. **All bits of the dtype** if left out, so a frame of
        12 bits in uint16 needs ``bits=12``.
    algorithm : str or Algorithm, optional
        How colours are interpolated: see `algorithms`.
    format : str or Format, optional
        Pixel format: see `formats`. By default ``"rgb24"``, or ``"mono8"`` for mono frames; if
        `dtype` asks for more than 8 bits and the frame has them, ``"rgb48"`` or ``"mono16"``.
    region : (int, int, int, int), optional
        x, y, width and height of the part to convert, in pixels. Unlike a slice, it is interpolated
        with what surrounds it if `edges` is ``"padded"``.
    binning : int, optional
        1 to 4: blocks of so many pixels either way become one pixel.
    bin_mode : {"sum", "mean"}, optional
        The sum of a block divided by `binning`, or its mean.
    window : {0, 1, 2}, optional
        Which 8 bits of longer samples 8-bit formats keep: the highest, or 1 or 2 bits lower.
    curve : {2, 3, 4, 5, 6}, optional
        Tone curve for 8-bit formats, from 10 bits on.
    table : array of int, optional
        Values 0 to 255 for 8-bit formats: 1024, or one for each possible sample.
    black : int or 4 ints, optional
        Level to subtract: one, or those of the 2x2 block at ``raw[0, 0]``, row by row.
    white : int, optional
        Where the sensor clips: samples from there on don't count for ``gains="gray-world"``, and
        float32 results are divided by it.
    gains : "gray-world" or 3 floats, optional
        White balance: red, green, blue from 1/4096 to 16, in steps of 1/4096.
    edges : {"native", "padded"}, optional
        What algorithms read beyond the region; padded edges have no tint.
    threshold : int, optional
        For ``algorithm="edge"``, 0 to 255.
    gray : {"luma", "raw"}, optional
        Where gray formats come from.
    truncate_to : int, optional
        8 to 16: drop the lowest bits of longer samples, for algorithms that take fewer.
    excess : {"reject", "mask"}, optional
        What to do with samples that have bits set above the significant ones.
    align : {"low", "high"}, optional
        Whether the significant bits are the lowest or the highest of a sample.
    orientation : int, optional
        How to turn the image, 1 to 8 as in TIFF and EXIF.
    threads : int, optional
        How many threads share the work; 0: one for each processor.
    layout : {"hwc", "chw"}, optional
        Whether channels come last, or first as neural networks expect them.
    dtype : dtype, optional
        uint8, uint16, or float32 for samples divided by `white` (full scale by default). If the
        format has fewer bits than the frame, by the format's full scale.
    out : array, optional
        Result to fill, of the right shape and dtype; only rows may have gaps between them.
    stream : Stream, optional
        Whose memory the conversion uses.
    dark : array, shape (height, width), optional
        A frame without light, exposed as long as this one, with the same bits. It is subtracted,
        the black level with it.
    flat : array, shape (height, width), optional
        A frame of an evenly lit surface. What is above `dark`, or else above black, evens out
        this frame.
    hot : array of int, shape (n, 2), optional
        Columns and rows of pixels that neighbours replace: ``numpy.argwhere(mask)[:, ::-1]``.

    Returns
    -------
    numpy.ndarray
        `out`, or a new array: (height, width, channels), or (height, width) for one channel, in
        native byte order. With ``layout="chw"`` (channels, height, width), as planar RGB and I444
        always have. NV12 and I420 have shape (height + ceil(height / 2), width), the width rounded
        up to a multiple of 2.

    Raises
    ------
    InvalidValue, InvalidType
        A `ValueError` or `TypeError` with the host layer's text and `code`.
    OutOfMemory
        A `MemoryError`.

    Notes
    -----
    Other threads of Python run meanwhile. Ctrl-C takes effect after the call. After an exception,
    the pixels of `out` are unspecified.

    Examples
    --------
    A red wall under RGGB filters:

    >>> raw = numpy.full((4, 6), 40, numpy.uint8)
    >>> raw[::2, ::2] = 200
    >>> image = vistrel.convert(raw, "rggb")
    >>> image.shape, image[1, 2].tolist()
    ((4, 6, 3), [200, 40, 40])
    >>> vistrel.convert(raw, "rggb", layout="chw", dtype="float32").shape
    (3, 4, 6)
    """
    if table is not None:
        table = _table_of(table)
    return _core.convert(
        handle_of(stream), raw, phase, bits, algorithm, format, region,
        binning, bin_mode, window, curve, table, black, white, gains, edges, threshold, gray,
        truncate_to, excess, align, orientation, threads, layout, dtype, out,
        dark, flat, points_of(hot))


def unpack(buffer, pixel_format, width, height, stride=None, continuous=False):
    """Unpack a packed frame.

    Parameters
    ----------
    buffer : bytes-like
        The frame's bytes; more may follow.
    pixel_format : str
        Any name that ``vistrel formats`` prints: of PFNC, V4L2, libcamera, GStreamer, FFmpeg or
        MIPI CSI-2, such as ``"BayerRG12p"`` or ``"SRGGB10P"``.
    width, height : int
        Size in pixels.
    stride : int, optional
        Bytes from row to row. By default each row begins at the next whole byte.
    continuous : bool, optional
        Rows may begin within a byte: none of the bits between them is left out.

    Returns
    -------
    numpy.ndarray, shape (height, width)
        uint8 for formats of a byte per sample, else uint16.

    Raises
    ------
    InvalidValue, InvalidType
        A `ValueError` or `TypeError` with the host layer's text and `code`.

    Examples
    --------
    Two samples of 12 bits in three bytes:

    >>> vistrel.unpack(bytes([0x34, 0x12, 0xAB]), "BayerRG12p", 2, 1).tolist()
    [[564, 2737]]
    """
    return _core.unpack(buffer, pixel_format, width, height, stride, continuous)


def trim():
    """Free the memory and end the threads that wait for the next conversion.

    Examples
    --------
    Results of more than 1 MiB leave their memory to the next ones:

    >>> raw = numpy.zeros((1200, 1600), numpy.uint8)
    >>> for _ in range(3):
    ...     image = vistrel.convert(raw, "rggb", threads=2)
    >>> del image
    >>> vistrel.trim()
    """
    _core.trim()


class Stream:
    """Memory for conversions, held by one worker.

    A worker that passes its stream to `convert` or `develop` allocates nothing but results from its
    second frame of a kind on.
    There are 128; one thread at a time may use each.

    Parameters
    ----------
    wait : bool, optional
        Whether to wait while all streams are in use. Ctrl-C interrupts. Otherwise the call raises
        `ConversionFailed`.

    Examples
    --------
    >>> raw = numpy.zeros((48, 64), numpy.uint8)
    >>> with vistrel.Stream() as stream:
    ...     image = vistrel.convert(raw, "rggb", algorithm="ahd", stream=stream)
    >>> image.shape
    (48, 64, 3)
    """

    def __init__(self, wait=True):
        self._stream = None
        while self._stream is None:
            try:
                self._stream = _core.Stream()
            except ConversionFailed as error:
                if not wait or error.code != Status.NO_STREAM:
                    raise
                time.sleep(0.002)

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self.release()

    def release(self):
        """Give the stream back. It converts no more.

        Examples
        --------
        >>> stream = vistrel.Stream()
        >>> stream.release()
        """
        self._stream.release()

    def trim(self):
        """Free its memory. The next conversion allocates what it needs.

        Examples
        --------
        >>> with vistrel.Stream() as stream:
        ...     stream.trim()
        """
        self._stream.trim()
