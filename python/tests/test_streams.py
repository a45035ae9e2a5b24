"""Streams, threads, forks, interrupts and the end of the interpreter."""

import concurrent.futures
import gc
import multiprocessing
import os
import signal
import subprocess
import sys
import textwrap
import threading
import time

import numpy as np
import pytest
import vistrel
from frames import noise

RAW = noise((200, 300), 12)
EXPECTED = vistrel.convert(RAW, "rggb", 12, "ahd")
STREAMS = 128


def convert(_=None):
    return vistrel.convert(RAW, "rggb", 12, "ahd").tobytes()


def free_streams():
    held = []
    try:
        while True:
            held.append(vistrel.Stream(wait=False))
    except vistrel.ConversionFailed as error:
        assert error.code == vistrel.Status.NO_STREAM
    for stream in held:
        stream.release()
    return len(held)


def test_a_stream_converts_and_is_given_back():
    before = free_streams()
    with vistrel.Stream() as stream:
        assert np.array_equal(vistrel.convert(RAW, "rggb", 12, "ahd", stream=stream), EXPECTED)
        image = vistrel.convert(RAW, "rggb", bits=12, algorithm="ahd", stream=stream)
        assert np.array_equal(image, EXPECTED)
        stream.trim()
        assert np.array_equal(vistrel.convert(RAW, "rggb", 12, "ahd", stream=stream), EXPECTED)
        assert free_streams() == before - 1
    assert free_streams() == before
    with pytest.raises(RuntimeError) as raised:
        vistrel.convert(RAW, "rggb", 12, stream=stream)
    assert raised.value.code == vistrel.Status.BAD_STREAM
    stream.release()


def test_exceptions_leave_no_stream_taken():
    before = free_streams()
    with pytest.raises(ZeroDivisionError), vistrel.Stream():
        1 / 0
    for options in ({}, {"dtype": "f4"}, {"layout": "chw", "dtype": "f4"}, {"threads": 2}):
        with pytest.raises(ValueError):
            vistrel.convert(RAW, "rggb", 9, **options)
    stream = vistrel.Stream()
    with pytest.raises(ValueError):
        vistrel.convert(RAW, "rggb", 9, dtype="f4", stream=stream)
    assert vistrel.convert(RAW, "rggb", 12, dtype="f4", stream=stream).dtype == np.float32
    del stream
    gc.collect()
    assert free_streams() == before


def test_conversions_need_no_stream():
    held = [vistrel.Stream() for _ in range(free_streams())]
    assert convert() == EXPECTED.tobytes()
    floats = vistrel.convert(RAW, "rggb", 12, dtype="f4")
    del held
    assert np.array_equal(floats, vistrel.convert(RAW, "rggb", 12, dtype="f4"))


def test_a_waiting_stream_gets_one_that_is_released():
    held = [vistrel.Stream() for _ in range(free_streams())]
    threading.Timer(0.05, lambda: held.pop().release()).start()
    with vistrel.Stream() as stream:
        assert vistrel.convert(RAW, "rggb", 12, stream=stream).any()


def test_ctrl_c_interrupts_a_wait():
    held = [vistrel.Stream() for _ in range(free_streams())]
    with pytest.raises(KeyboardInterrupt):
        threading.Timer(0.05, lambda: os.kill(os.getpid(), signal.SIGINT)).start()
        vistrel.Stream()
    del held
    assert convert() == EXPECTED.tobytes()


def test_ctrl_c_during_conversions_leaves_no_stream_taken():
    before = free_streams()
    for seconds in (0.001, 0.003, 0.01, 0.02):
        with pytest.raises(KeyboardInterrupt):
            threading.Timer(seconds, lambda: os.kill(os.getpid(), signal.SIGINT)).start()
            with vistrel.Stream() as stream:
                while True:
                    vistrel.convert(RAW, "rggb", 12, "ahd", stream=stream)
        assert free_streams() == before


def test_other_threads_run_during_a_conversion():
    """A thread that wakes up meanwhile need not wait for its end."""
    raw = noise((3000, 4000), 10)
    vistrel.convert(raw, "rggb", 10, "kimmel")
    woken = []

    def work():
        time.sleep(0.01)
        woken.append(time.perf_counter())

    thread = threading.Thread(target=work)
    thread.start()
    vistrel.convert(raw, "rggb", 10, "kimmel")
    end = time.perf_counter()
    thread.join()
    assert woken[0] < end


def test_many_threads_with_many_options():
    options = [{}, {"threads": 2}, {"dtype": "f4"}, {"algorithm": "ahd"}, {"layout": "chw"}]
    expected = [vistrel.convert(RAW, "rggb", 12, **o).tobytes() for o in options]

    def work(seed):
        stream = vistrel.Stream()
        for i in range(40):
            k = (seed + i) % len(options)
            on = stream if i % 2 else None
            image = vistrel.convert(RAW, "rggb", 12, stream=on, **options[k])
            assert image.tobytes() == expected[k]
            if i == 20:
                vistrel.trim()
        return True

    with concurrent.futures.ThreadPoolExecutor(16) as pool:
        assert all(pool.map(work, range(16)))


def test_one_stream_in_two_threads_is_rejected_or_right():
    stream = vistrel.Stream()

    def work(_):
        try:
            return np.array_equal(vistrel.convert(RAW, "rggb", 12, "ahd", stream=stream), EXPECTED)
        except vistrel.ConversionFailed as error:
            return error.code == vistrel.Status.BUSY_STREAM

    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        assert all(pool.map(work, range(100)))


@pytest.mark.parametrize("method", ["fork", "spawn"])
def test_processes(method):
    vistrel.convert(RAW, "rggb", 12, threads=2)  # a team that children of fork don't have
    with multiprocessing.get_context(method).Pool(2) as pool:
        assert set(pool.map(convert, range(8))) == {EXPECTED.tobytes()}


def test_a_child_of_fork_has_teams_of_its_own():
    expected = vistrel.convert(RAW, "rggb", 12, threads=2).tobytes()
    child = os.fork()
    if child == 0:
        same = vistrel.convert(RAW, "rggb", 12, threads=2).tobytes() == expected
        os._exit(0 if same else 1)
    assert os.waitpid(child, 0)[1] == 0


def test_forks_while_threads_convert():
    done = threading.Event()

    def work():
        while not done.is_set():
            convert()

    threads = [threading.Thread(target=work) for _ in range(3)]
    for thread in threads:
        thread.start()
    try:
        for _ in range(10):
            child = os.fork()
            if child == 0:
                os._exit(0 if convert() == EXPECTED.tobytes() else 1)
            assert os.waitpid(child, 0)[1] == 0
    finally:
        done.set()
        for thread in threads:
            thread.join()


def run(script):
    return subprocess.run([sys.executable, "-c", textwrap.dedent(script)], timeout=60,
                          capture_output=True, text=True)


@pytest.mark.parametrize("options", ["", ", dtype='f4'", ", threads=2"])
def test_the_interpreter_ends_while_threads_convert(options):
    for _ in range(3):
        done = run(f"""
            import threading, time, numpy, vistrel
            raw = numpy.zeros((1500, 2000), numpy.uint8)
            def work():
                while True:
                    vistrel.convert(raw, "rggb"{options})
            for _ in range(4):
                threading.Thread(target=work, daemon=True).start()
            time.sleep(0.1)
        """)
        assert (done.returncode, done.stderr) == (0, "")


def test_ctrl_c_ends_a_program():
    process = subprocess.Popen(
        [sys.executable, "-c", textwrap.dedent("""
            import numpy, vistrel
            raw = numpy.zeros((1500, 2000), numpy.uint8)
            print("ready", flush=True)
            while True:
                vistrel.convert(raw, "rggb", algorithm="ahd")
        """)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert process.stdout.readline() == "ready\n"
    time.sleep(0.1)
    process.send_signal(signal.SIGINT)
    _, errors = process.communicate(timeout=60)
    assert process.returncode == -signal.SIGINT
    assert "KeyboardInterrupt" in errors
