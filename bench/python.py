"""Times of calls from Python: beside the C interface, and beside OpenCV.

    python.py [--rounds N] [--size WxH]
"""

import argparse
import ctypes
import sys
import time
from pathlib import Path

import cv2
import numpy as np
import vistrel

sys.path.append(str(Path(__file__).resolve().parents[1] / "python/tests"))
import c_interface as c  # noqa: E402


def seconds(calls, rounds):
    """The fastest of the rounds of each call, in turns: so a busy machine slows all of them."""
    best = [float("inf")] * len(calls)
    for _ in range(rounds):
        for i, call in enumerate(calls):
            start = time.perf_counter()
            result = call()
            best[i] = min(best[i], time.perf_counter() - start)
            del result
    return best


def repeated(call, times):
    def calls():
        for _ in range(times):
            call()

    return calls


def c_call(raw, out):
    """A conversion by ctypes with all structures made before."""
    frame = c.frame_of(raw, "rggb", 8)
    conversion = c.conversion_of(frame, format="rgb24")
    image = c.Image(out.ctypes.data, out.nbytes, 0)
    arguments = [ctypes.byref(x) for x in (frame, conversion, image, c.Error())]
    convert = c.library.vistrel_convert
    return lambda: convert(*arguments)


def print_overhead(rounds):
    """ctypes needs about a microsecond itself, which an empty call measures."""
    raw, out = np.zeros((64, 64), np.uint8), np.empty((64, 64, 3), np.uint8)
    empty = c.library.vistrel_version
    calls = [c_call(raw, out), empty, lambda: vistrel.convert(raw, "rggb", out=out),
             lambda: vistrel.convert(raw, "rggb")]
    by_c, nothing, into, new = (1e6 * t / 100 for t in
                                seconds([repeated(call, 100) for call in calls], 20 * rounds))
    print(f"64x64: C {by_c - nothing:.2f} us, with out {into:.2f} us, without {new:.2f} us")


def print_large(width, height, rounds):
    raw = np.random.default_rng(1).integers(0, 256, (height, width), np.uint8)
    out = np.empty((height, width, 3), np.uint8)
    out.fill(0)
    code = vistrel.cv2_code("rggb")
    calls = {
        "C": c_call(raw, out),
        "out": lambda: vistrel.convert(raw, "rggb", out=out),
        "new": lambda: vistrel.convert(raw, "rggb"),
        "cv2 with dst": lambda: cv2.cvtColor(raw, code, dst=out),
        "cv2 without": lambda: cv2.cvtColor(raw, code),
        "cv2 VNG": lambda: cv2.cvtColor(raw, cv2.COLOR_BayerBG2RGB_VNG),
        "vng": lambda: vistrel.convert(raw, "rggb", algorithm="vng"),
        "ahd": lambda: vistrel.convert(raw, "rggb", algorithm="ahd"),
        "float32": lambda: vistrel.convert(raw, "rggb", dtype="f4"),
        "float32 by NumPy": lambda: vistrel.convert(raw, "rggb") / np.float32(255),
    }
    for threads in (1, cv2.getNumberOfCPUs()):
        cv2.setNumThreads(threads)
        times = dict(zip(calls, (1e3 * t for t in seconds(calls.values(), rounds))))
        print(f"{width}x{height}, cv2 with {threads} threads")
        for name, time_taken in times.items():
            print(f"  {name:<18}{time_taken:8.2f} ms")
        print(f"  out / C {times['out'] / times['C']:.3f}, "
              f"cv2 without / new {times['cv2 without'] / times['new']:.2f}")


def print_threads(rounds):
    """Sixteen threads of Python against one, each converting frames of its own."""
    from concurrent.futures import ThreadPoolExecutor

    frames = [np.random.default_rng(i).integers(0, 256, (1500, 2000), np.uint8) for i in range(16)]
    outs = [np.empty((1500, 2000, 3), np.uint8) for _ in frames]

    def work(i):
        for _ in range(4):
            vistrel.convert(frames[i], "rggb", algorithm="ahd", out=outs[i])

    with ThreadPoolExecutor(16) as pool:
        one, many = seconds([lambda: [work(i) for i in range(16)],
                             lambda: list(pool.map(work, range(16)))], rounds)
    print(f"16 threads: {one / many:.2f} times the throughput of one")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--rounds", type=int, default=30)
    parser.add_argument("--size", default="4000x3000", metavar="WxH")
    arguments = parser.parse_args()
    width, height = map(int, arguments.size.split("x"))
    print_overhead(arguments.rounds)
    print_large(width, height, arguments.rounds)
    print_threads(min(arguments.rounds, 5))


if __name__ == "__main__":
    main()
