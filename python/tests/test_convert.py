"""Every option gives the bytes of the C interface."""

import c_interface as c
import numpy as np
import pytest
import vistrel
from frames import MOSAICS, noise
from hypothesis import given, settings
from hypothesis import strategies as st

TABLE = np.arange(1024) % 251


def expected(raw, phase, bits=8, alignment=0, **fields):
    frame = c.frame_of(raw, phase, bits, alignment)
    return c.convert(frame, c.conversion_of(frame, **fields))


def check(raw, phase, bits, options, alignment=0, **fields):
    """Compares a conversion with options with that of C with fields."""
    fields = {"format": "rgb24"} | fields
    layout, pixels = expected(raw, phase, bits, alignment, **fields)
    image = vistrel.convert(raw, phase, bits, **options)
    assert image.shape[:2] == (layout.height, layout.width)
    assert image.tobytes() == pixels.tobytes()
    return image


@pytest.mark.parametrize("algorithm", [a.name for a in vistrel.algorithms()])
@pytest.mark.parametrize("phase", MOSAICS)
def test_algorithms(algorithm, phase):
    raw = noise((33, 42), 10)
    check(raw, phase, 10, {"algorithm": algorithm}, algorithm=algorithm)


@pytest.mark.parametrize("info", vistrel.formats(), ids=lambda info: info.name.value)
@pytest.mark.parametrize("shape", [(32, 48), (33, 48)])
def test_formats(info, shape):
    phase = "mono" if info.mono else "grbg"
    raw = noise(shape, 12)
    layout, pixels = expected(raw, phase, 12, format=info.name)
    image = vistrel.convert(raw, phase, 12, format=info.name)
    assert image.dtype == info.dtype
    assert image.tobytes() == pixels.tobytes()
    if "planar" in info.name or info.name == "i444":
        assert image.shape == (3, *shape)
    elif info.name in ("nv12", "i420"):
        assert image.shape == (shape[0] + (shape[0] + 1) // 2, shape[1])
    else:
        assert image.shape == (shape if info.channels == 1 else (*shape, info.channels))


@pytest.mark.parametrize(
    "options, fields",
    [
        ({"region": (3, 5, 21, 17)}, {"region": (3, 5, 21, 17)}),
        ({"binning": 2}, {"binning": 2}),
        ({"binning": 3, "bin_mode": "mean"}, {"binning": 3, "bin_mode": 1}),
        ({"window": 1}, {"reduction": 1}),
        ({"window": 2}, {"reduction": 2}),
        ({"curve": 2}, {"reduction": 3}),
        ({"curve": 6}, {"reduction": 7}),
        ({"black": 60}, {"black": (60, 60, 60, 60)}),
        ({"black": (60, 70, 0, 5)}, {"black": (60, 70, 0, 5)}),
        ({"gains": (2, 1, 1.5)}, {"white_balance": 1, "gains": (8192, 4096, 6144)}),
        ({"gains": np.array([0.3, 1, 16])}, {"white_balance": 1, "gains": (1229, 4096, 65536)}),
        ({"gains": "gray-world"}, {"white_balance": 2}),
        ({"gains": "gray-world", "white": 900}, {"white_balance": 2, "white": 900}),
        ({"edges": "padded"}, {"edges": 1}),
        ({"algorithm": "edge", "threshold": 64}, {"algorithm": "edge", "threshold": 64}),
        ({"format": "gray8", "gray": "raw"}, {"format": "gray8", "gray": 1}),
        ({"truncate_to": 8}, {"truncate_to": 8}),
        ({"orientation": 6}, {"orientation": 6}),
        ({"dtype": np.uint16}, {"format": "rgb48"}),
        ({"dtype": "uint8"}, {}),
        ({"layout": "chw"}, {"format": "rgb24_planar"}),
        ({"layout": "chw", "dtype": "u2"}, {"format": "rgb48_planar"}),
        ({"algorithm": "AHD", "format": "Rgb24"}, {"algorithm": "ahd"}),
        ({"threads": 2}, {}),
        ({"threads": 0}, {}),
    ],
    ids=str,
)
def test_options(options, fields):
    raw = noise((61, 80), 10)
    layout, pixels = expected(raw, "bggr", 10, **({"format": "rgb24"} | fields))
    assert vistrel.convert(raw, "bggr", 10, **options).tobytes() == pixels.tobytes()


def test_table():
    raw, table = noise((30, 40), 10), TABLE.astype(np.uint16)
    fields = {"reduction": 10, "table_entries": 1024, "table": table.ctypes.data}
    for values in (table, TABLE, TABLE.tolist(), np.repeat(table, 2)[::2]):
        check(raw, "rggb", 10, {"table": values}, **fields)


def test_excess_and_alignment():
    raw = noise((30, 40), 16)
    check(raw, "rggb", 10, {"excess": "mask"}, excess=1)
    check(raw & 0xFFC0, "rggb", 10, {"align": "high"}, alignment=1)


def test_finished_pixels():
    pixels = noise((30, 40, 3), 16)
    frame = c.frame_of(pixels, "bgr", 16)
    layout, expected_bytes = c.convert(frame, c.conversion_of(frame, format="rgb48"))
    for array in (pixels, pixels.astype(">u2"), pixels[::-1].copy()[::-1]):
        image = vistrel.convert(array, "bgr", dtype="u2")
        assert image.tobytes() == expected_bytes.tobytes()


def test_bits_default_to_those_of_the_dtype():
    raw = noise((30, 40), 16)
    assert np.array_equal(vistrel.convert(raw, "rggb"), vistrel.convert(raw, "rggb", 16))


def test_odd_chroma_has_an_even_width():
    raw = noise((31, 41))
    nv12 = vistrel.convert(raw, "rggb", format="nv12")
    i420 = vistrel.convert(raw, "rggb", format="i420")
    assert nv12.shape == i420.shape == (31 + 16, 42)
    assert np.array_equal(nv12[:31, :41], i420[:31, :41])
    assert not i420[:31, 41].any()
    chroma = i420[31:].reshape(2, 16, 21)
    assert np.array_equal(nv12[31:].reshape(16, 21, 2), chroma.transpose(1, 2, 0))


FLOATS = [{}, {"layout": "chw"}, {"threads": 2}, {"gains": "gray-world"}, {"orientation": 6},
          {"region": (4, 6, 30, 21)}, {"format": "rgb24"}, {"format": "gray16"}, {"binning": 2},
          {"format": "rgba32"}, {"edges": "padded", "algorithm": "ahd"}]


@pytest.mark.parametrize("options", FLOATS, ids=str)
@pytest.mark.parametrize("bits", [8, 12, 16])
def test_float32_is_the_integer_by_full_scale(options, bits):
    if bits == 8 and options.get("format") == "gray16":
        pytest.skip("needs samples of 16 bits")
    raw = noise((61, 80), bits)
    floats = vistrel.convert(raw, "gbrg", bits, dtype=np.float32, **options)
    integers = vistrel.convert(
        raw, "gbrg", bits, **({} if "format" in options or bits == 8 else {"dtype": "u2"}), **options
    )
    full_scale = 255 if integers.dtype == np.uint8 else (1 << bits) - 1
    assert floats.dtype == np.float32
    assert np.array_equal(floats, integers.astype(np.float32) / np.float32(full_scale))


def test_float32_of_mono_frames_and_white():
    raw = noise((20, 30), 12)
    floats = vistrel.convert(raw, "mono", 12, dtype="f4", white=3000)
    assert np.array_equal(floats, raw.astype(np.float32) / np.float32(3000))
    assert vistrel.convert(raw, "mono", 12, dtype="f4", layout="chw").shape == (1, 20, 30)
    bytes_by_255 = vistrel.convert(raw, "mono", 12, format="mono8", dtype="f4", white=3000)
    assert bytes_by_255.max() == 1


def test_large_floats_are_made_in_bands():
    """Rows are longer than a chunk, and bands shorter than the frame."""
    raw = noise((203, 3001), 12)
    for layout in ("hwc", "chw"):
        floats = vistrel.convert(raw, "rggb", 12, dtype="f4", layout=layout)
        integers = vistrel.convert(raw, "rggb", 12, dtype="u2", layout=layout)
        assert np.array_equal(floats, integers / np.float32(4095))


OUTS = [
    ({}, (24, 30, 3), np.uint8),
    ({"dtype": "u2"}, (24, 30, 3), np.uint16),
    ({"dtype": "f4"}, (24, 30, 3), np.float32),
    ({"dtype": "f4", "layout": "chw"}, (3, 24, 30), np.float32),
    ({"layout": "chw"}, (3, 24, 30), np.uint8),
    ({"format": "gray8"}, (24, 30), np.uint8),
    ({"format": "nv12"}, (36, 30), np.uint8),
    ({"format": "i420"}, (36, 30), np.uint8),
]


@pytest.mark.parametrize("options, shape, dtype", OUTS)
def test_out_is_filled_and_returned(options, shape, dtype):
    raw = noise((24, 30), 10)
    image = vistrel.convert(raw, "rggb", 10, **options)
    out = np.ones(shape, dtype)
    assert vistrel.convert(raw, "rggb", 10, out=out, **options) is out
    assert np.array_equal(out, image)


@pytest.mark.parametrize("options, shape, dtype", OUTS)
def test_out_may_have_gaps_between_rows(options, shape, dtype):
    if options.get("format") == "i420":
        pytest.skip("has no gaps")
    raw = noise((24, 30), 10)
    image = vistrel.convert(raw, "rggb", 10, **options)
    axis = 1 if len(shape) == 2 or shape[2] == 3 else 2
    wide = list(shape)
    wide[axis] += 6
    whole = np.full(wide, 7, dtype)
    part = [slice(None)] * len(shape)
    part[axis] = slice(2, 2 + shape[axis])
    vistrel.convert(raw, "rggb", 10, out=whole[tuple(part)], **options)
    assert np.array_equal(whole[tuple(part)], image)
    whole[tuple(part)] = 7
    assert (whole == 7).all()


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_out_may_be_upside_down(dtype):
    raw = noise((24, 30), 10)
    out = np.empty((24, 30, 3), dtype)
    vistrel.convert(raw, "rggb", 10, dtype=dtype, out=out[::-1])
    assert np.array_equal(out[::-1], vistrel.convert(raw, "rggb", 10, dtype=dtype))


@settings(max_examples=150, deadline=None)
@given(data=st.data())
def test_drawn_conversions(data):
    bits = data.draw(st.integers(8, 16))
    height, width = data.draw(st.tuples(st.integers(12, 70), st.integers(12, 70)))
    raw = noise((height, width), bits, data.draw(st.integers(0, 9)))
    phase = data.draw(st.sampled_from([*MOSAICS, "mono"]))
    limits = {a.name: a.max_bits for a in vistrel.algorithms()}
    algorithm = data.draw(st.sampled_from([a for a, most in limits.items() if most >= bits]))
    binning = data.draw(st.integers(1, 4))
    edges = data.draw(st.integers(0, 1))
    black = data.draw(st.lists(st.integers(0, 200), min_size=4, max_size=4))
    names = [f.name for f in vistrel.formats() if f.mono == (phase == "mono")]
    deep = [f.name for f in vistrel.formats() if f.dtype.itemsize == 2]
    pixel_format = data.draw(st.sampled_from([n for n in names if bits > 8 or n not in deep]))
    fields = {"algorithm": algorithm, "binning": binning, "edges": edges, "black": black,
              "format": pixel_format}
    layout, pixels = expected(raw, phase, bits, **fields)
    image = vistrel.convert(raw, phase, bits, algorithm, pixel_format, binning=binning,
                            edges=["native", "padded"][edges], black=black)
    if pixel_format == "i420" and layout.width % 2:
        luma = pixels[: layout.width * layout.height].reshape(layout.height, layout.width)
        assert np.array_equal(image[: layout.height, : layout.width], luma)
        assert image[layout.height :].tobytes() == pixels[luma.size :].tobytes()
    else:
        assert image.tobytes() == pixels.tobytes()


@pytest.mark.parametrize("options", [{}, {"truncate_to": 8}])
def test_wide_results_of_few_bits(options):
    """Samples of a wide format take two bytes, however few bits they have."""
    bits = 12 if options else 8
    raw = noise((32, 48), bits).astype("u2")
    for name in ("rgb48", "gray16", "rgb48_planar"):
        layout, pixels = expected(raw, "rggb", bits, format=name, **options)
        assert layout.bits == 8
        image = vistrel.convert(raw, "rggb", bits, format=name, **options)
        assert image.dtype == np.uint16
        assert image.tobytes() == pixels.tobytes()
    image = vistrel.convert(raw, "rggb", bits, format="rgb48", **options)
    for layout, wide in (("hwc", image), ("chw", image.transpose(2, 0, 1))):
        floats = vistrel.convert(raw, "rggb", bits, dtype="float32", layout=layout, **options)
        assert np.array_equal(floats, (wide / np.float32(255)).astype("f4"))
    mono = vistrel.convert(raw, "mono", bits, format="mono16", **options)
    assert np.array_equal(mono, raw >> (bits - 8))
