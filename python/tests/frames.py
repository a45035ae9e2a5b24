"""Frames for tests."""

import numpy as np

MOSAICS = ["grbg", "bggr", "rggb", "gbrg"]


def noise(shape, bits=8, seed=1):
    """Samples of all values."""
    dtype = np.uint8 if bits == 8 else np.uint16
    return np.random.default_rng(seed).integers(0, 1 << bits, shape, dtype)


def flat(phase, shape, colours, dtype=np.uint8):
    """A wall of one colour, (red, green, blue), under the filters of a mosaic."""
    raw = np.empty(shape, dtype)
    for i, letter in enumerate(phase):
        raw[i // 2 :: 2, i % 2 :: 2] = colours["rgb".index(letter)]
    return raw
