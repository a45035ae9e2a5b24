"""Kinds of arrays and other objects: the exact result or a named exception."""

import array
import ctypes
import mmap
import types

import numpy as np
import pytest
import vistrel
from frames import noise

H, W = 24, 32
BYTES, WORDS = noise((H, W)), noise((H, W), 12)


class Interface:
    """Offers an array by __array_interface__ alone."""

    def __init__(self, array):
        self.array = array
        self.__array_interface__ = array.__array_interface__


def within(array, top=3, left=5, width=50):
    """The same samples as a part of a larger array."""
    whole = np.zeros((array.shape[0] + 7, width), array.dtype)
    part = whole[top : top + array.shape[0], left : left + array.shape[1]]
    part[:] = array
    return part


def read_only(array):
    copy = array.copy()
    copy.flags.writeable = False
    return copy


def mapped(array):
    memory = mmap.mmap(-1, array.nbytes)
    memory[:] = array.tobytes()
    return np.frombuffer(memory, array.dtype).reshape(array.shape)


def at_odd_address(array):
    memory = np.zeros(array.nbytes + 1, np.uint8)
    memory[1:] = np.frombuffer(array.tobytes(), np.uint8)
    return memory[1:].view(array.dtype).reshape(array.shape)


def ctypes_of(array):
    kind = {1: ctypes.c_uint8, 2: ctypes.c_uint16}[array.itemsize]
    return (kind * array.shape[1] * array.shape[0]).from_buffer_copy(array)


def subclass(array):
    class Subclass(np.ndarray):
        pass

    return array.view(Subclass)


def misaligned_rows(array):
    """Rows of samples of 16 bits that begin at odd addresses."""
    size = array.itemsize
    memory = np.zeros(array.shape[0] * (array.shape[1] * size + 3), np.uint8)
    strides = (array.shape[1] * size + 3, size)
    view = np.ndarray(array.shape, array.dtype, memory, 1, strides)
    view[:] = array
    return view


# How to offer the same samples without changing them.
SAME = {
    "plain": lambda a: a,
    "read-only": read_only,
    "crop": within,
    "crop from an odd address": lambda a: within(a, 0, 1, 47),
    "rows with a step": lambda a: np.repeat(a, 3, axis=0)[::3],
    "upside down": lambda a: a[::-1].copy()[::-1],
    "upside down crop": lambda a: within(a[::-1].copy())[::-1],
    "foreign byte order": lambda a: a.astype(a.dtype.newbyteorder("S")),
    "native byte order, named": lambda a: a.astype(a.dtype.newbyteorder("<")),
    "foreign crop": lambda a: within(a.astype(a.dtype.newbyteorder("S"))),
    "foreign, upside down": lambda a: a.astype(a.dtype.newbyteorder("S"))[::-1].copy()[::-1],
    "foreign, at an odd address": lambda a: at_odd_address(a.astype(a.dtype.newbyteorder("S"))),
    "odd address": at_odd_address,
    "rows at odd addresses": misaligned_rows,
    "memoryview": lambda a: memoryview(a.copy()),
    "read-only memoryview": lambda a: memoryview(a.copy()).toreadonly(),
    "memoryview of a crop": lambda a: memoryview(within(a)),
    "cast memoryview": lambda a: memoryview(a.tobytes()).cast("B").cast("BH"[a.itemsize - 1],
                                                                        a.shape),
    "ctypes": ctypes_of,
    "__array_interface__": Interface,
    "__array_interface__ of a crop": lambda a: Interface(within(a)),
    "mapped memory": mapped,
    "subclass": subclass,
    "matrix": lambda a: a.view(np.matrix),
    "memmap": lambda a: a.view(np.memmap),
    "part of more dimensions": lambda a: np.stack([a, a + 1, a])[2],
    "squeezed": lambda a: a[None, :, :, None].squeeze(),
    "field of records": lambda a: np.rec.fromarrays([a])["f0"],
}

ENTRIES = {
    "new": lambda raw, bits: vistrel.convert(raw, "rggb", bits),
    "out": lambda raw, bits: vistrel.convert(raw, "rggb", bits, out=np.empty((H, W, 3), np.uint8)),
    "float32": lambda raw, bits: vistrel.convert(raw, "rggb", bits, dtype="f4"),
    "mono": lambda raw, bits: vistrel.convert(raw, "mono", bits),
    "stream": lambda raw, bits: vistrel.convert(raw, "rggb", bits, stream=vistrel.Stream()),
    "develop": lambda raw, bits: vistrel.develop(raw, "rggb", bits),
    "develop mono": lambda raw, bits: vistrel.develop(raw, "mono", bits),
    "decide_look": lambda raw, bits: vistrel.decide_look(raw, "rggb", bits),
}


@pytest.mark.parametrize("entry", ENTRIES)
@pytest.mark.parametrize("kind", SAME)
@pytest.mark.parametrize("plain, bits", [(BYTES, 8), (WORDS, 12)], ids=["uint8", "uint16"])
def test_same_samples_give_the_same_pixels(kind, entry, plain, bits):
    raw = SAME[kind](plain)
    before = bytes(memoryview(np.ascontiguousarray(getattr(raw, "array", raw))))
    result, expected = ENTRIES[entry](raw, bits), ENTRIES[entry](plain, bits)
    assert result == expected if entry == "decide_look" else np.array_equal(result, expected)
    assert bytes(memoryview(np.ascontiguousarray(getattr(raw, "array", raw)))) == before


# How to offer bytes in one piece.
BUFFERS = {
    "bytes": bytes,
    "bytearray": bytearray,
    "memoryview": memoryview,
    "array.array": lambda data: array.array("B", data),
    "words": lambda data: memoryview(array.array("H", data)),
    "uint8": lambda data: np.frombuffer(data, np.uint8),
    "two dimensions": lambda data: np.frombuffer(data, np.uint8).reshape(36, -1),
    "big-endian": lambda data: np.frombuffer(data, ">u4"),
    "floats": lambda data: np.frombuffer(data, np.float32),
    "records": lambda data: np.frombuffer(data, [("a", "u1"), ("b", "<u2"), ("c", "u1")]),
    "part": lambda data: np.frombuffer(b"xyz" + data + b"xyz", np.uint8)[3:-3],
    "ctypes": lambda data: (ctypes.c_uint8 * len(data)).from_buffer_copy(data),
    "mapped": lambda data: mapped(np.frombuffer(data, np.uint8)),
    "Fortran order, one row": lambda data: np.asfortranarray(np.frombuffer(data, np.uint8)[None]),
    "interface": lambda data: Interface(np.frombuffer(data, np.uint8)),
}


@pytest.mark.parametrize("kind", BUFFERS)
def test_same_bytes_give_the_same_samples(kind):
    y, x = np.mgrid[:72, :96]
    light = 1500 + 900 * np.sin(x / 13 + y / 17) + noise((72, 96), 8) / 8
    data = light.astype("<u2").tobytes()
    buffer = BUFFERS[kind](data)
    assert np.array_equal(vistrel.unpack(buffer, "BayerRG12", 96, 72), light.astype(np.uint16))
    assert vistrel.guess(buffer) == vistrel.guess(data) != []


@pytest.mark.parametrize(
    "buffer, exception",
    [(None, TypeError), ("text", TypeError), (3, TypeError), ([1, 2], TypeError),
     (np.zeros((9, 9), np.uint8)[:, ::2], ValueError),
     (np.zeros((9, 9), np.uint8)[::-1], ValueError),
     (np.zeros((9, 8), np.uint8).T, ValueError)],
)
def test_other_buffers_are_rejected(buffer, exception):
    for call in (lambda: vistrel.unpack(buffer, "Mono8", 2, 2), lambda: vistrel.guess(buffer)):
        with pytest.raises(exception):
            call()


def strided(strides, shape=(H, W)):
    return np.lib.stride_tricks.as_strided(np.zeros(9000, np.uint8), shape, strides)


REJECTED = {
    "Fortran order": (np.asfortranarray(BYTES), ValueError, "BAD_STRIDE"),
    "transposed": (np.zeros((W, H), np.uint8).T, ValueError, "BAD_STRIDE"),
    "columns with a step": (np.zeros((H, 2 * W), np.uint8)[:, ::2], ValueError, "BAD_STRIDE"),
    "field of longer records": (np.rec.fromarrays([BYTES, BYTES])["f0"], ValueError, "BAD_STRIDE"),
    "mirrored": (BYTES[:, ::-1], ValueError, "BAD_STRIDE"),
    "turned": (np.rot90(BYTES, 2), ValueError, "BAD_STRIDE"),
    "broadcast rows": (np.broadcast_to(BYTES[0], (H, W)), ValueError, "BAD_STRIDE"),
    "broadcast columns": (np.broadcast_to(BYTES[:, :1], (H, W)), ValueError, "BAD_STRIDE"),
    "overlapping rows": (strided((W - 1, 1)), ValueError, "BAD_STRIDE"),
    "no rows": (BYTES[:0], ValueError, "BAD_SIZE"),
    "no columns": (BYTES[:, :0], ValueError, "BAD_SIZE"),
    "nothing": (np.empty((0, 0), np.uint8), ValueError, "BAD_SIZE"),
    "new without rows": (np.zeros((0, W), np.uint8), ValueError, "BAD_SIZE"),
    "new without columns": (np.zeros((H, 0), np.uint8), ValueError, "BAD_SIZE"),
    "an interface of nothing": (types.SimpleNamespace(__array_interface__={}), ValueError,
                                "NULL_POINTER"),
    "no interface": (types.SimpleNamespace(__array_interface__=None), TypeError, "NULL_POINTER"),
    "no dimension": (np.array(3, np.uint8), ValueError, "BAD_SIZE"),
    "one dimension": (BYTES[0], ValueError, "BAD_SIZE"),
    "bytes": (BYTES.tobytes(), ValueError, "BAD_SIZE"),
    "bytearray": (bytearray(9), ValueError, "BAD_SIZE"),
    "array.array": (array.array("H", range(9)), ValueError, "BAD_SIZE"),
    "three dimensions": (BYTES[:, :, None], ValueError, "BAD_SIZE"),
    "four dimensions": (BYTES[None, :, :, None], ValueError, "BAD_SIZE"),
    "one row": (BYTES[:1], ValueError, "REGION_TOO_SMALL"),
    "one column": (BYTES[:, :1], ValueError, "REGION_TOO_SMALL"),
    "bool": (BYTES > 9, TypeError, "BAD_BITS"),
    "int8": (BYTES.astype(np.int8), TypeError, "BAD_BITS"),
    "int16": (BYTES.astype(np.int16), TypeError, "BAD_BITS"),
    "int32": (BYTES.astype(np.int32), TypeError, "BAD_BITS"),
    "uint32": (BYTES.astype(np.uint32), TypeError, "BAD_BITS"),
    "int64": (BYTES.astype(np.int64), TypeError, "BAD_BITS"),
    "uint64": (BYTES.astype(np.uint64), TypeError, "BAD_BITS"),
    "float16": (BYTES.astype(np.float16), TypeError, "BAD_BITS"),
    "float32": (BYTES.astype(np.float32), TypeError, "BAD_BITS"),
    "float64": (BYTES.astype(np.float64), TypeError, "BAD_BITS"),
    "complex": (BYTES.astype(complex), TypeError, "BAD_BITS"),
    "object": (BYTES.astype(object), TypeError, "BAD_BITS"),
    "str": (BYTES.astype("U4"), TypeError, "BAD_BITS"),
    "byte strings": (BYTES.astype("S1"), TypeError, "BAD_BITS"),
    "void": (BYTES.view("V1"), TypeError, "BAD_BITS"),
    "datetime": (BYTES.astype("M8[s]"), TypeError, "BAD_BITS"),
    "records": (np.zeros((H, W), [("a", "u1")]), TypeError, "BAD_BITS"),
    "masked": (np.ma.array(BYTES), TypeError, "BAD_BITS"),
    "masked samples": (np.ma.masked_less(BYTES, 9), TypeError, "BAD_BITS"),
    "list": (BYTES.tolist(), TypeError, "NULL_POINTER"),
    "tuple": (tuple(BYTES), TypeError, "NULL_POINTER"),
    "None": (None, TypeError, "NULL_POINTER"),
    "a number": (5, TypeError, "NULL_POINTER"),
    "a numpy scalar": (np.float64(5), TypeError, "BAD_BITS"),
    "a path": ("frame.pgm", TypeError, "NULL_POINTER"),
    "an iterator": (iter(BYTES), TypeError, "NULL_POINTER"),
    "a generator": ((row for row in BYTES), TypeError, "NULL_POINTER"),
    "a function": (len, TypeError, "NULL_POINTER"),
    "a class": (np.ndarray, TypeError, "NULL_POINTER"),
    "range": (range(9), TypeError, "NULL_POINTER"),
    "dict": ({}, TypeError, "NULL_POINTER"),
}


@pytest.mark.parametrize("entry", ENTRIES)
@pytest.mark.parametrize("kind", REJECTED)
def test_others_are_rejected(kind, entry):
    raw, exception, code = REJECTED[kind]
    if entry.endswith("mono") and kind in ("one row", "one column"):
        result = ENTRIES[entry](raw, None)
        assert result.shape == raw.shape if "develop" in entry else np.array_equal(result, raw)
        return
    with pytest.raises(exception) as raised:
        ENTRIES[entry](raw, None)
    assert isinstance(raised.value, vistrel.Error)
    assert raised.value.code == vistrel.Status[code]


@pytest.mark.parametrize("kind", SAME)
def test_unpack_takes_the_bytes_of_any_object(kind):
    raw = SAME[kind](WORDS.astype("<u2"))
    plain = np.asarray(raw)
    if not plain.flags.c_contiguous:
        with pytest.raises(ValueError) as raised:
            vistrel.unpack(raw, "RG12", W, H)
        assert raised.value.code == vistrel.Status.BAD_STRIDE
        return
    samples = vistrel.unpack(raw, "RG12", W, H)
    assert np.array_equal(samples, plain.view("<u2") if plain.dtype.isnative else plain.byteswap())


@pytest.mark.parametrize("kind", [k for k, v in REJECTED.items() if v[2] == "NULL_POINTER"])
def test_unpack_rejects_objects_without_bytes(kind):
    with pytest.raises(REJECTED[kind][1]) as raised:
        vistrel.unpack(REJECTED[kind][0], "RG12", W, H)
    assert raised.value.code == vistrel.Status.NULL_POINTER


BAD_OUT = {
    "too small": (np.empty((H, W - 1, 3), np.uint8), ValueError, "BAD_SIZE"),
    "one dimension less": (np.empty((H, W), np.uint8), ValueError, "BAD_SIZE"),
    "another dtype": (np.empty((H, W, 3), np.int8), TypeError, "BAD_FORMAT"),
    "too deep": (np.empty((H, W, 3), np.uint16), TypeError, "BAD_FORMAT"),
    "read-only": (read_only(np.empty((H, W, 3), np.uint8)), ValueError, "OVERLAP"),
    "a step in rows": (np.empty((H, 2 * W, 3), np.uint8)[:, ::2], ValueError, "BAD_STRIDE"),
    "Fortran order": (np.empty((H, W, 3), np.uint8, "F"), ValueError, "BAD_STRIDE"),
    "mirrored": (np.empty((H, W, 3), np.uint8)[:, ::-1], ValueError, "BAD_STRIDE"),
    "another order": (np.empty((H, W, 3), np.uint8)[:, :, ::-1], ValueError, "BAD_STRIDE"),
    "a list": ([], TypeError, "NULL_POINTER"),
    "masked": (np.ma.zeros((H, W, 3), np.uint8), TypeError, "BAD_BITS"),
}


@pytest.mark.parametrize("kind", BAD_OUT)
def test_bad_results_are_rejected(kind):
    out, exception, code = BAD_OUT[kind]
    with pytest.raises(exception) as raised:
        vistrel.convert(BYTES, "rggb", out=out)
    assert raised.value.code == vistrel.Status[code]


def test_planes_follow_each_other():
    out = np.empty((3, H + 1, W), np.uint8)[:, :H]
    with pytest.raises(ValueError) as raised:
        vistrel.convert(BYTES, "rggb", layout="chw", out=out)
    assert raised.value.code == vistrel.Status.BAD_STRIDE
    with pytest.raises(ValueError) as raised:
        vistrel.convert(BYTES, "rggb", layout="chw", out=np.empty((3, H, W), np.uint8)[:, ::-1])
    assert raised.value.code == vistrel.Status.BAD_STRIDE


def test_i420_has_no_gaps():
    out = np.empty((H * 3 // 2, W + 2), np.uint8)[:, :W]
    with pytest.raises(ValueError) as raised:
        vistrel.convert(BYTES, "rggb", format="i420", out=out)
    assert raised.value.code == vistrel.Status.BAD_STRIDE


def test_the_result_may_not_lie_on_the_frame():
    memory = np.zeros((H, W, 3), np.uint8)
    with pytest.raises(ValueError) as raised:
        vistrel.convert(memory.reshape(-1)[: H * W].reshape(H, W), "rggb", out=memory)
    assert raised.value.code == vistrel.Status.OVERLAP
