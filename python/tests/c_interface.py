"""libvistrelhost by ctypes: what the package must equal."""

import ctypes
import os

import numpy as np

u32, size_t, void_p = ctypes.c_uint32, ctypes.c_size_t, ctypes.c_void_p


class Frame(ctypes.Structure):
    _fields_ = [("samples", void_p), ("size", size_t), ("stride", size_t), ("width", u32),
                ("height", u32), ("bytes_per_sample", u32), ("bits", u32), ("phase", u32),
                ("alignment", u32), ("packing", u32), ("reserved", u32 * 3)]


class Conversion(ctypes.Structure):
    _fields_ = [("format", u32), ("algorithm", u32), ("threshold", u32), ("gray", u32),
                ("binning", u32), ("truncate_to", u32), ("reduction", u32), ("table_entries", u32),
                ("table", void_p), ("excess", u32), ("edges", u32), ("region", u32 * 4),
                ("black", u32 * 4), ("white", u32), ("white_balance", u32), ("gains", u32 * 3),
                ("threads", u32), ("run", void_p), ("run_context", void_p), ("team", void_p),
                ("calibration", void_p), ("finish", void_p), ("destination", u32),
                ("bin_mode", u32), ("orientation", u32), ("reserved", u32 * 7)]


class Layout(ctypes.Structure):
    _fields_ = [("width", u32), ("height", u32), ("channels", u32), ("bits", u32),
                ("row_bytes", size_t), ("bytes", size_t), ("frame_bytes", size_t),
                ("working_bytes", size_t), ("reserved", u32 * 4)]


class Image(ctypes.Structure):
    _fields_ = [("pixels", void_p), ("size", size_t), ("stride", ctypes.c_ssize_t),
                ("reserved", u32 * 10)]


class Packed(ctypes.Structure):
    _fields_ = [("bytes", void_p), ("size", size_t), ("stride", size_t), ("width", u32),
                ("height", u32), ("packing", u32), ("bits", u32), ("continuous", u32),
                ("reserved", u32 * 5)]


class PackedLayout(ctypes.Structure):
    _fields_ = [("row_bytes", size_t), ("bytes", size_t), ("unpacked_bytes", size_t),
                ("bytes_per_sample", u32), ("reserved", u32 * 5)]


class Error(ctypes.Structure):
    _fields_ = [("status", ctypes.c_int32), ("argument", ctypes.c_char * 48),
                ("value", ctypes.c_char * 64), ("reason", ctypes.c_char * 376),
                ("text", ctypes.c_char * 496), ("reserved", u32 * 9)]


class Rejected(Exception):
    def __init__(self, error):
        super().__init__(error.text.decode())
        self.status = error.status


library = ctypes.CDLL(os.environ["VISTREL_HOST_LIBRARY"])
library.vistrel_default_conversion.restype = None
library.vistrel_phase_at.restype = u32


def call(name, *arguments):
    error = Error()
    if getattr(library, name)(*arguments, ctypes.byref(error)):
        raise Rejected(error)


def code(kind, name):
    result = u32()
    call(f"vistrel_parse_{kind}", name.encode(), ctypes.byref(result))
    return result.value


def frame_of(raw, phase, bits, alignment=0):
    """Of a C-ordered array in this machine's byte order."""
    assert raw.flags.c_contiguous and raw.dtype.isnative
    return Frame(raw.ctypes.data, raw.nbytes, 0, raw.shape[1], raw.shape[0], raw.itemsize, bits,
                 code("phase", phase), alignment)


def conversion_of(frame, **fields):
    """The default conversion with these fields: names are codes, sequences arrays."""
    conversion = Conversion()
    library.vistrel_default_conversion(ctypes.byref(frame), ctypes.byref(conversion))
    for name, value in fields.items():
        if name in ("format", "algorithm"):
            value = code(name, value)
        if hasattr(value, "__len__"):
            value = type(getattr(conversion, name))(*value)
        setattr(conversion, name, value)
    return conversion


def convert(frame, conversion):
    """The layout, and the bytes of all rows without padding."""
    layout = Layout()
    call("vistrel_get_layout", ctypes.byref(frame), ctypes.byref(conversion), ctypes.byref(layout))
    pixels = np.zeros(layout.bytes, np.uint8)
    image = Image(pixels.ctypes.data, pixels.nbytes, 0)
    call("vistrel_convert", ctypes.byref(frame), ctypes.byref(conversion), ctypes.byref(image))
    return layout, pixels


def unpack(data, packing, bits, width, height, stride=0):
    """Samples of a packed frame, as bytes."""
    data = np.frombuffer(data, np.uint8)
    packed = Packed(data.ctypes.data, data.nbytes, stride, width, height, packing, bits, 0)
    layout = PackedLayout()
    call("vistrel_get_packed_layout", ctypes.byref(packed), ctypes.byref(layout))
    samples = np.zeros(layout.unpacked_bytes, np.uint8)
    call("vistrel_unpack", ctypes.byref(packed), void_p(samples.ctypes.data),
         size_t(samples.nbytes))
    return samples
