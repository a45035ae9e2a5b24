"""What calls allocate, and that they keep nothing."""

import gc
import os
import sys
import tracemalloc

import numpy as np
import vistrel
from frames import noise

CALLS = int(os.environ.get("VISTREL_PYTHON_CALLS", 20_000))


def resident():
    with open("/proc/self/statm") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def rejected():
    try:
        vistrel.convert(noise((4, 4)), "rggb", bits=9)
    except ValueError:
        pass


RAW, WORDS, BIG = noise((24, 32)), noise((24, 32), 12), noise((1200, 1600))
OUT = np.empty((24, 32, 3), np.uint8)
CALLS_OF_ALL_KINDS = [
    lambda: vistrel.convert(RAW, "rggb"),
    lambda: vistrel.convert(RAW, "rggb", out=OUT),
    lambda: vistrel.convert(RAW[::-1], "rggb"),
    lambda: vistrel.convert(WORDS.astype(">u2"), "rggb", 12, dtype="f4"),
    lambda: vistrel.convert(memoryview(WORDS), "rggb", 12, layout="chw", dtype="f4"),
    lambda: vistrel.convert(WORDS, "rggb", 12, "ahd", gains=(2, 1, 1.5), black=[1, 2, 3, 4]),
    lambda: vistrel.convert(WORDS, "rggb", 12, table=[i // 4 for i in range(1024)]),
    lambda: vistrel.unpack(WORDS, "RG12", 32, 24),
    lambda: vistrel.convert(RAW, "rggb", stream=vistrel.Stream()),
    lambda: vistrel.develop(WORDS, "rggb", 12),
    lambda: vistrel.decide_look(WORDS.astype(">u2"), "rggb", 12, "astro"),
    lambda: vistrel.phase_at("rggb", 1, 1),
    rejected,
]


def test_memory_stays_flat():
    """Of calls of all kinds, results of more than a megabyte among them."""

    def work(calls):
        for i in range(calls):
            CALLS_OF_ALL_KINDS[i % len(CALLS_OF_ALL_KINDS)]()
            if i % 200 == 0:
                vistrel.convert(BIG, "rggb", threads=2)
        gc.collect()
        return resident(), sys.getallocatedblocks()

    bytes_before, blocks_before = work(CALLS // 4)
    bytes_after, blocks_after = work(CALLS)
    assert bytes_after - bytes_before < 2 << 20
    assert blocks_after - blocks_before < 1000


def test_the_test_notices_a_kept_result():
    kept = []
    before = resident()
    for _ in range(3000):
        kept.append(vistrel.convert(RAW, "rggb", dtype="f4"))
    assert resident() - before > 2 << 20


def traced_peak(call):
    """Bytes that NumPy and Python allocate at most, beyond what they hold before."""
    call()
    gc.collect()
    tracemalloc.start()
    try:
        call()
        return tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()


def test_no_copy_where_none_is_needed():
    """Frame and result have 96 KiB or more."""
    words = noise((256, 400), 12)
    out, floats = np.empty((256, 300, 3), np.uint8), np.empty((3, 256, 300), np.float32)
    crop = words[:, 40:340]
    for raw in (crop, crop.astype(">u2"), memoryview(np.ascontiguousarray(crop)), crop.view()):
        assert traced_peak(lambda raw=raw: vistrel.convert(raw, "rggb", 12, out=out)) < 8192
    assert traced_peak(lambda: vistrel.convert(crop, "rggb", 12, dtype="f4", layout="chw",
                                               out=floats)) < 8192
    assert traced_peak(lambda: vistrel.convert(crop, "rggb", 12, out=out[::-1])) < 8192


def test_negative_row_strides_cost_one_copy():
    words = noise((256, 300), 12)
    out = np.empty((256, 300, 3), np.uint8)
    peak = traced_peak(lambda: vistrel.convert(words[::-1], "rggb", 12, out=out))
    assert words.nbytes <= peak < words.nbytes + 8192


def test_freed_results_are_used_again_and_trimmed():
    vistrel.trim()
    first = vistrel.convert(BIG, "rggb")
    address = first.ctypes.data
    del first
    second = vistrel.convert(BIG, "rggb")
    assert second.ctypes.data == address
    third = vistrel.convert(BIG, "rggb")
    assert third.ctypes.data != address
    assert np.array_equal(second, third)
    del second, third
    before = resident()
    vistrel.trim()
    assert before - resident() > 2 * BIG.size * 3 * 3 // 4


def test_the_pool_is_bounded():
    vistrel.trim()
    results = [vistrel.convert(noise((2000, 4000)), "rggb") for _ in range(16)]
    held = resident()
    del results
    kept = resident()
    assert held - kept > 4 * 24_000_000
    vistrel.trim()


def test_views_keep_their_results():
    image = vistrel.convert(BIG, "rggb")
    expected = image.copy()
    row = image[600]
    del image
    other = vistrel.convert(BIG ^ 255, "rggb")
    assert np.array_equal(row, expected[600])
    assert not np.array_equal(other, expected)
