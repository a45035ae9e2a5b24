"""Throughput of Dask's workers, and what the scheduler costs.

    dask_cluster.py [--frames N] [--size WxH] [--rounds N]
"""

import argparse
import contextlib
import tempfile
import time

import dask.array as da
import distributed
import numpy as np
import vistrel.dask

TASKS = 4000


def fastest(calls, rounds):
    """The shortest time of each call, in turns: so a busy machine slows all of them."""
    best = dict.fromkeys(calls, float("inf"))
    for _ in range(rounds):
        for name, call in calls.items():
            start = time.perf_counter()
            call()
            best[name] = min(best[name], time.perf_counter() - start)
    return best


def made(block_info, frame):
    """A chunk of frames: copies, which cost less than conversions."""
    first, end = block_info[None]["array-location"][0]
    return np.broadcast_to(frame, (end - first, *frame.shape)).copy()


def corners(images):
    return images[:, 0, 0, 0]


def array_of(count, frame):
    """A sample of each image, so that images stay where they are."""
    frames = da.map_blocks(made, chunks=((10,) * (count // 10), *frame.shape), dtype="u2",
                           meta=np.empty((0, 0, 0), "u2"), frame=frame)
    images = vistrel.dask.convert(frames, "rggb", 12, algorithm="ahd")
    return images.map_blocks(corners, drop_axis=[1, 2, 3], dtype="u1")


def convert_serially(count, frame):
    images = np.empty((10, *frame.shape, 3), np.uint8)
    for _ in range(count // 10):
        frames = np.broadcast_to(frame, (10, *frame.shape)).copy()
        for raw, image in zip(frames, images):
            vistrel.convert(raw, "rggb", 12, "ahd", out=image)


def make_files(inputs, client):
    with tempfile.TemporaryDirectory() as out:
        vistrel.dask.convert_files(inputs, out, read={"phase": "rggb"}, chunk=2).compute(
            scheduler=client)


def scheduler_seconds(client):
    """The processor time of this process, in which the scheduler runs, while workers do nothing."""
    array = da.zeros(TASKS, chunks=1, dtype="u1").map_blocks(np.negative, dtype="u1")
    start = time.process_time()
    array.persist(scheduler=client).map_blocks(np.negative, dtype="u1").sum().compute(
        scheduler=client)
    return time.process_time() - start


def cluster_of(workers, stack):
    cluster = stack.enter_context(distributed.LocalCluster(
        n_workers=workers, threads_per_worker=1, processes=True, dashboard_address=None))
    return stack.enter_context(distributed.Client(cluster))


def print_times(arguments, frame, folder, stack):
    count, inputs = arguments.frames, [f"{folder}/{i}.pgm" for i in range(arguments.frames // 5)]
    for path in inputs:
        vistrel.write(path, frame, 12, phase="rggb")
    one, two = cluster_of(1, stack), cluster_of(2, stack)
    array = array_of(count, frame)
    best = fastest({
        "arrays without Dask": lambda: convert_serially(count, frame),
        "arrays, 1 worker": lambda: array.compute(scheduler=one),
        "arrays, 2 workers": lambda: array.compute(scheduler=two),
        "files, 1 worker": lambda: make_files(inputs, one),
        "files, 2 workers": lambda: make_files(inputs, two),
    }, arguments.rounds)
    for name, seconds in best.items():
        frames = len(inputs) if "files" in name else count
        print(f"{name}: {frames / seconds:.1f} frames/s")
    tasks = 2 * TASKS
    print(f"scheduler: {1e6 * min(scheduler_seconds(two) for _ in range(3)) / tasks:.0f} us a task")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--frames", type=int, default=200)
    parser.add_argument("--size", default="2000x1500", metavar="WxH")
    parser.add_argument("--rounds", type=int, default=8)
    arguments = parser.parse_args()
    width, height = map(int, arguments.size.split("x"))
    y, x = np.mgrid[:height, :width]
    light = 1500 + 900 * np.sin(x / 31) * np.cos(y / 23)
    frame = (light + np.random.default_rng(1).normal(0, 20, light.shape)).astype(np.uint16)
    with tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as stack:
        print_times(arguments, frame, folder, stack)


if __name__ == "__main__":
    main()
