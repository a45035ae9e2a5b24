"""Any object as any argument: a result, or an error of the package."""

import numpy as np
import pytest
import vistrel
from frames import MOSAICS, noise
from hypothesis import given, settings
from hypothesis import strategies as st

RAW = noise((24, 32), 12)

OBJECTS = st.one_of(
    st.none(),
    st.booleans(),
    st.integers(-(2**70), 2**70),
    st.integers(-2, 20),
    st.floats(),
    st.text(max_size=5),
    st.binary(max_size=5),
    st.sampled_from(["rggb", "bilinear", "rgb24", "raw", "mean", "high", "chw", "f4", "\0", "\ud800"]),
    st.lists(st.integers(-3, 70000), max_size=5),
    st.lists(st.floats(), max_size=4),
    st.sampled_from([object(), int, len, np.zeros(3), np.zeros((3, 3), "U1"), np.array(None), {}]),
)
OPTIONS = ["bits", "algorithm", "format", "region", "binning", "bin_mode", "window", "curve",
           "table", "black", "white", "gains", "edges", "threshold", "gray", "truncate_to",
           "excess", "align", "orientation", "threads", "layout", "dtype", "out", "stream"]
EXPECTED = vistrel.Error


@settings(max_examples=400, deadline=None)
@given(st.dictionaries(st.sampled_from(OPTIONS), OBJECTS, max_size=3))
def test_options(options):
    if isinstance(options.get("threads"), int) and options["threads"] > 4:
        options["threads"] = 300
    try:
        image = vistrel.convert(RAW, "rggb", **({"bits": 12} | options))
    except EXPECTED:
        return
    assert isinstance(image, np.ndarray)


@settings(max_examples=200, deadline=None)
@given(OBJECTS, OBJECTS)
def test_frames_and_phases(raw, phase):
    for call in (lambda: vistrel.convert(raw, "rggb"), lambda: vistrel.convert(RAW, phase),
                 lambda: vistrel.phase_at(phase, 1, 1), lambda: vistrel.cv2_code(phase),
                 lambda: vistrel.rotate(phase, (3, 3))):
        try:
            call()
        except EXPECTED:
            pass


LOOK_PARTS = st.one_of(
    st.sampled_from(["auto", "linear", "srgb", "astro", "black=64", "white=4095", "highlights=clip",
                     "gains=1:2:3", "curve=gamma:2.2", "exposure=0.001", "curve=asinh:1e9"]),
    st.text("blackwhitegnsmrx=:.,-0123456789", max_size=12),
)
LOOKS = st.one_of(
    OBJECTS,
    st.lists(LOOK_PARTS, max_size=3).map(",".join),
    st.tuples(st.sampled_from(["auto", "astro", "no"]), OBJECTS, OBJECTS, OBJECTS, OBJECTS,
              st.none() | st.floats()),
)


@settings(max_examples=300, deadline=None)
@given(LOOKS, st.sampled_from(["rggb", "mono"]))
def test_looks(look, phase):
    """Of a look that is not rejected, the decided one gives the same picture."""
    try:
        if isinstance(look, tuple):
            look = vistrel.Look(*look)
    except EXPECTED:
        return
    try:
        picture = vistrel.develop(RAW, phase, 12, look)
    except EXPECTED:
        with pytest.raises(EXPECTED):
            vistrel.decide_look(RAW, phase, 12, look)
        return
    decided = vistrel.decide_look(RAW, phase, 12, look)
    assert np.array_equal(vistrel.develop(RAW, phase, 12, decided), picture)


@settings(max_examples=50, deadline=None)
@given(st.binary(max_size=4000), st.none() | st.tuples(st.integers(-1, 50), st.integers(-1, 50)))
def test_guesses(data, size):
    try:
        guesses = vistrel.guess(data * 3, size)
    except vistrel.InvalidValue:
        assert size and min(size) < 1
        return
    for guess in guesses:
        assert guess.unpack(data * 3).shape == (guess.height, guess.width)


@settings(max_examples=300, deadline=None)
@given(st.binary(max_size=200), st.sampled_from(["Mono8", "RG12", "BayerGB10p", "RAW14", "pRCC"]),
       st.integers(-1, 40), st.integers(-1, 40), st.none() | st.integers(-1, 60))
def test_packed_bytes(data, name, width, height, stride):
    try:
        samples = vistrel.unpack(data, name, width, height, stride)
    except vistrel.InvalidValue:
        return
    assert samples.shape == (height, width)


@settings(max_examples=200, deadline=None)
@given(st.integers(1, 40), st.integers(1, 40), st.sampled_from([*MOSAICS, "mono"]),
       st.tuples(*[st.integers(0, 40)] * 4))
def test_regions(height, width, phase, region):
    """A region within the frame has the pixels of the whole image if edges are padded."""
    raw = noise((height, width), 8)
    x, y, columns, rows = region
    try:
        part = vistrel.convert(raw, phase, region=region, edges="padded")
    except vistrel.InvalidValue:
        assert x + columns > width or y + rows > height or min(columns, rows, height, width) < 2
        return
    whole = vistrel.convert(raw, phase, edges="padded")
    assert np.array_equal(part, whole[y : y + rows, x : x + columns])
