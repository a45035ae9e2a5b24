"""Packed frames by any name, against the C interface."""

import json
import os

import c_interface as c
import numpy as np
import pytest
import vistrel

FORMATS = json.loads(open(os.environ["VISTREL_FORMATS"]).read())
W, H = 13, 9


def data(size):
    return np.random.default_rng(5).integers(0, 256, size, np.uint8).tobytes()


def names():
    """Every name of every raw format that the program lists."""
    for row in FORMATS["raw"]:
        for key in ("pfnc", "pfnc_value", "v4l2", "v4l2_name", "libcamera", "gstreamer", "ffmpeg",
                    "mipi"):
            if row.get(key):
                yield row[key], row


def test_every_name_gives_what_c_gives():
    packings = {"bytes": 0, "16bit-le": 1, "16bit-be": 2, "pfnc": 3, "gige": 4, "mipi": 5}
    count = 0
    for name, row in names():
        packing, bits = packings[row["packing"]], row["bits"]
        stride = 40
        samples = vistrel.unpack(data(stride * H), name, W, H, stride)
        expected = c.unpack(data(stride * H), packing, bits, W, H, stride)
        assert samples.shape == (H, W)
        assert samples.dtype == (np.uint8 if packing == 0 else np.uint16)
        assert samples.tobytes() == expected.tobytes(), name
        count += 1
    assert count > 150


def test_rows_begin_at_whole_bytes():
    samples = vistrel.unpack(data(200), "BayerRG12p", 3, 5)
    assert samples.tobytes() == c.unpack(data(200), 3, 12, 3, 5).tobytes()


@pytest.mark.parametrize(
    "arguments, exception, code",
    [
        ((b"12", "RG12", 2, 2), ValueError, "SHORT_BUFFER"),
        ((b"12", "RG12", 100000, 100000), ValueError, "SHORT_BUFFER"),
        ((b"12", "RG12", 2**32 - 1, 2**32 - 1), ValueError, "TOO_LARGE"),
        ((b"12", "RG12", 0, 2), ValueError, "BAD_SIZE"),
        ((b"12", "RG12", 1, -2), ValueError, "BAD_SIZE"),
        ((b"12", "RG12", 1, 2.0), TypeError, "BAD_SIZE"),
        ((b"12345678", "RG12", 2, 2, 3), ValueError, "BAD_STRIDE"),
        ((b"12", "RG13", 1, 1), ValueError, "BAD_FORMAT"),
        ((b"12", None, 1, 1), TypeError, "BAD_FORMAT"),
        (("12", "RG12", 1, 1), TypeError, "NULL_POINTER"),
    ],
)
def test_rejection(arguments, exception, code):
    with pytest.raises(exception) as raised:
        vistrel.unpack(*arguments)
    assert raised.value.code == vistrel.Status[code]


def test_an_unknown_name_suggests_the_nearest():
    with pytest.raises(ValueError, match="the nearest is BayerRG12p"):
        vistrel.unpack(b"", "BayrRG12p", 1, 1)
