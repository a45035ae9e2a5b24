"""Formats of headerless raw files: what the program guesses."""

import json
import os
import subprocess

import numpy as np
import pytest
import vistrel


def scene(shape=(120, 160), phase="rggb"):
    y, x = np.mgrid[: shape[0], : shape[1]]
    light = 1800 + 900 * np.sin(x / 21 + y / 33) + 300 * np.cos(y / 11)
    for i, letter in enumerate(phase):
        if letter != "g":
            light[i // 2 :: 2, i % 2 :: 2] *= {"r": 0.6, "b": 0.7}[letter]
    return (light + np.random.default_rng(3).normal(0, 15, shape)).astype("<u2")


def test_the_first_guess_is_right():
    raw = scene()
    best = vistrel.guess(raw.tobytes())[0]
    assert (best.width, best.height, best.bits, best.align) == (160, 120, 12, "low")
    assert (best.skip, best.frames, best.trailing, best.stride) == (0, 1, 0, None)
    assert set(best.phases) == {"rggb", "bggr"}
    assert np.array_equal(best.unpack(raw.tobytes()), raw)


def test_big_endian_behind_a_header_with_padding():
    raw = scene()
    rows = np.zeros((120, 192), ">u2")
    rows[:, :160] = raw
    data = bytes(range(256)) * 2 + rows.tobytes()
    best = vistrel.guess(data, size=(160, 120))[0]
    assert (best.skip, best.stride) == (512, 384)
    assert np.array_equal(best.unpack(data), raw)


def test_guesses_are_the_programs(tmp_path):
    file = tmp_path / "a.raw"
    scene().tofile(file)
    report = subprocess.run([os.environ["VISTREL"], "guess", file, "--json"], check=True,
                            stdout=subprocess.PIPE).stdout
    rows = json.loads(report)
    guesses = vistrel.guess(file.read_bytes())
    assert len(guesses) == len(rows) > 0
    for ours, row in zip(guesses, rows):
        for name in ("score", "width", "height", "bits", "align", "stride", "continuous", "skip",
                     "frames", "trailing"):
            assert getattr(ours, name) == row[name]
        assert list(ours.phases) == row["phases"]


def test_every_guess_can_be_unpacked():
    data = scene((64, 80)).tobytes()
    guesses = vistrel.guess(data)
    assert len(guesses) > 1
    for g in guesses:
        assert g.unpack(data).shape == (g.height, g.width)


@pytest.mark.parametrize("data", [b"", b"x" * 255, bytes(5000)])
def test_nothing_looks_like_a_frame(data):
    assert vistrel.guess(data) == []


@pytest.mark.parametrize(
    "arguments, exception",
    [((3,), TypeError), (("text",), TypeError), ((b"", (0, 4)), ValueError),
     ((b"", (4,)), ValueError), ((b"", 4), TypeError), ((np.zeros((9, 9))[:, ::2],), ValueError)],
)
def test_rejection(arguments, exception):
    with pytest.raises(exception):
        vistrel.guess(*arguments)


def test_rows_may_begin_within_a_byte():
    """Three samples of 12 bits, and the row's end in the middle of a byte."""
    data = bytes([0x34, 0x12, 0xAB, 0x21, 0x43, 0x65, 0x87, 0xA9, 0xCB])
    samples = vistrel.unpack(data, "BayerRG12p", 3, 2, continuous=True)
    assert samples.tolist() == [[0x234, 0xAB1, 0x321], [0x654, 0x987, 0xCBA]]
