"""Chunked arrays and files, by threads and by processes of which one is killed."""

import hashlib
import os
import signal
import time

import numpy as np
import pytest
import vistrel
from frames import noise

da = pytest.importorskip("dask.array")
distributed = pytest.importorskip("distributed")
import vistrel.dask  # noqa: E402

pytestmark = pytest.mark.filterwarnings("ignore")  # those of Dask


def frames_of(count, chunks=4, bits=12):
    stack = noise((count, 24, 32), bits)
    return stack, da.from_array(stack, chunks=(chunks, 24, 32))


@pytest.mark.parametrize(
    "options",
    [{}, {"algorithm": "ahd"}, {"layout": "chw", "dtype": "float32"}, {"region": (3, 4, 12, 10)},
     {"format": "nv12"}, {"gains": "gray-world"}, {"orientation": 6}, {"format": "gray16"}],
)
def test_convert(options):
    stack, frames = frames_of(10)
    images = vistrel.dask.convert(frames, "gbrg", 12, **options)
    expected = np.stack([vistrel.convert(raw, "gbrg", 12, **options) for raw in stack])
    assert (images.shape, images.dtype, images.numblocks[0]) == (expected.shape, expected.dtype, 3)
    assert images._meta.dtype == expected.dtype and images._meta.ndim == expected.ndim
    assert np.array_equal(images.compute(scheduler="threads"), expected)


@pytest.mark.parametrize("look", ["auto", "srgb,exposure=2", vistrel.Look(mode="linear", black=10)])
def test_develop(look):
    stack, frames = frames_of(6)
    images = vistrel.dask.develop(frames, "rggb", 12, look, dtype="uint16")
    expected = np.stack([vistrel.develop(raw, "rggb", 12, look, dtype="uint16") for raw in stack])
    assert np.array_equal(images.compute(scheduler="threads"), expected)


def test_unpack():
    packed = noise((7, 24 * 50), 8)
    frames = vistrel.dask.unpack(da.from_array(packed, chunks=(3, 400)), "BayerRG12p", 32, 24, 50)
    expected = np.stack([vistrel.unpack(data, "BayerRG12p", 32, 24, 50) for data in packed])
    assert (frames.shape, frames.dtype) == (expected.shape, expected.dtype)
    assert np.array_equal(frames.compute(scheduler="threads"), expected)


def test_chunks_become_whole_frames():
    stack, _ = frames_of(5)
    divided = da.from_array(stack, chunks=(2, 7, 9))
    images = vistrel.dask.convert(divided, "rggb", 12)
    assert images.chunks[0] == (2, 2, 1)
    expected = np.stack([vistrel.convert(raw, "rggb", 12) for raw in stack])
    assert np.array_equal(images.compute(scheduler="threads"), expected)


def test_nothing_is_computed_before_it_is_asked_for():
    def fail(block):
        raise AssertionError

    frames = da.map_blocks(fail, da.zeros((4, 24, 32), dtype="u2"), dtype="u2",
                           meta=np.empty((0, 0, 0), "u2"))
    images = vistrel.dask.convert(frames, "rggb", 12)
    assert images.shape == (4, 24, 32, 3)
    with pytest.raises(AssertionError):
        images.compute(scheduler="sync")


def test_names_of_tasks_follow_from_what_they_do():
    _, frames = frames_of(4)
    one = vistrel.dask.convert(frames, "rggb", 12)
    assert one.name == vistrel.dask.convert(frames, "rggb", 12).name
    assert one.name != vistrel.dask.convert(frames, "grbg", 12).name


@pytest.mark.parametrize(
    "call, exception",
    [
        (lambda f: vistrel.dask.convert(f, "rgbg", 12), ValueError),
        (lambda f: vistrel.dask.convert(f, "rggb", 12, algorithm="best"), ValueError),
        (lambda f: vistrel.dask.convert(f[0], "rggb", 12), ValueError),
        (lambda f: vistrel.dask.convert(f.astype("f4"), "rggb", 12), TypeError),
        (lambda f: vistrel.dask.develop(f, "rggb", 12, "best"), ValueError),
        (lambda f: vistrel.dask.develop(f, "rggb", 12, 3), TypeError),
        (lambda f: vistrel.dask.unpack(f, "BayerRG12p", 4, 4), ValueError),
        (lambda f: vistrel.dask.unpack(f[0].astype("u1"), "BayerRG12p", 40, 4), ValueError),
    ],
)
def test_options_are_rejected_at_once(call, exception):
    with pytest.raises(exception):
        call(frames_of(4)[1])


def test_samples_are_rejected_by_the_computation():
    _, frames = frames_of(4)
    with pytest.raises(vistrel.InvalidValue, match="samples"):
        vistrel.dask.convert(frames, "rggb", 10).compute(scheduler="threads")


COUNT, CHUNK = 2000, 10


def seeded(block_info):
    """Frames whose samples follow from their numbers, slowly enough to be interrupted."""
    first, end = block_info[None]["array-location"][0]
    time.sleep(0.01)
    return np.stack([noise((48, 64), 12, seed) for seed in range(first, end)])


def hashes(images):
    digests = [hashlib.sha256(image.tobytes()).hexdigest().encode() for image in images]
    return np.array(digests, "S64")


@pytest.fixture
def client():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=2, processes=True,
                                  dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            yield client


def kill_one(client, finished):
    """A worker, once some tasks are done."""
    end = time.monotonic() + 60
    while finished() < 20:
        assert time.monotonic() < end
        time.sleep(0.005)
    pid = list(client.run(os.getpid).values())[0]
    os.kill(pid, signal.SIGKILL)
    return pid


def tasks_done(client):
    return client.run_on_scheduler(
        lambda dask_scheduler: sum(t.state in ("memory", "released", "forgotten")
                                   for t in dask_scheduler.tasks.values()))


def test_all_frames_survive_a_killed_worker(client):
    frames = da.map_blocks(seeded, chunks=((CHUNK,) * (COUNT // CHUNK), 48, 64), dtype="u2",
                           meta=np.empty((0, 0, 0), "u2"))
    images = vistrel.dask.convert(frames, "rggb", 12, algorithm="ahd")
    result = client.compute(images.map_blocks(hashes, drop_axis=[1, 2, 3], dtype="S64"))
    pid = kill_one(client, lambda: tasks_done(client))
    assert not result.done()
    got = result.result(timeout=120)
    assert pid not in client.run(os.getpid).values()
    raws = (noise((48, 64), 12, seed) for seed in range(COUNT))
    expected = hashes([vistrel.convert(raw, "rggb", 12, algorithm="ahd") for raw in raws])
    assert len(set(got)) == COUNT
    assert np.array_equal(got, expected)


def test_all_files_survive_a_killed_worker(client, tmp_path):
    """What is there when the worker dies is whole, and is not made again."""
    out, serial = tmp_path / "out", tmp_path / "serial"
    out.mkdir()
    serial.mkdir()
    for i in range(400):
        vistrel.write(tmp_path / f"{i}.pgm", noise((60, 80), 12, i), 12, phase="gbrg")
    manifest = tmp_path / "manifest"
    manifest.write_text("".join(f"{tmp_path}/{i}.pgm\n" for i in range(400)))
    options = {"read": {"phase": "gbrg"}, "develop": True, "chunk": 5}
    report = vistrel.dask.convert_files(manifest, out, **options)
    assert (report.shape, report.dtype) == ((400,), vistrel.dask.REPORT)
    assert not list(out.iterdir())
    result = client.compute(report)
    kill_one(client, lambda: len(list(out.iterdir())))
    assert not result.done()
    rows = result.result(timeout=120)
    expected = vistrel.dask.convert_files(manifest, serial, **options).compute(scheduler="sync")
    assert np.array_equal(rows["sha256"], expected["sha256"])
    for i in range(400):
        assert (out / f"{i}.png").read_bytes() == (serial / f"{i}.png").read_bytes()
    again = vistrel.dask.convert_files(manifest, out, **options).compute(scheduler="threads")
    assert not again["made"].any()
    assert sorted(p.name for p in out.iterdir()) == sorted(p.name for p in serial.iterdir())
    (out / "7.png").unlink()
    again = vistrel.dask.convert_files(manifest, out, **options).compute(scheduler="threads")
    assert np.flatnonzero(again["made"]).tolist() == [7]
    assert np.array_equal(again["sha256"], expected["sha256"])


def test_outputs_have_names_of_their_own():
    with pytest.raises(ValueError, match="a/x.pgm has the same output, x.png"):
        vistrel.dask.convert_files(["a/x.pgm", "b/x.dng"], "out")
    with pytest.raises(ValueError) as raised:
        vistrel.dask.convert_files(["a: b/x.pgm", "c: d/x.dng"], "out")
    error = raised.value
    assert str(error) == f"{error.argument} {error.value}: {error.reason}"
    assert (error.argument, error.value) == ("manifest", "c: d/x.dng")
    assert error.reason == "a: b/x.pgm has the same output, x.png"


@pytest.mark.parametrize("name", ["convert", "develop", "unpack"])
def test_other_arrays_are_rejected_by_name(name):
    options = ("RG12", 32, 24) if name == "unpack" else ("rggb", 12)
    with pytest.raises(vistrel.InvalidType) as raised:
        getattr(vistrel.dask, name)(noise((4, 24, 32), 12), *options)
    error = raised.value
    assert (error.argument, error.value) == ("packed" if name == "unpack" else "frames", "ndarray")


@pytest.fixture
def folder(tmp_path, monkeypatch):
    """The current one, with frames a, b, c and a folder for pictures."""
    monkeypatch.chdir(tmp_path)
    (tmp_path / "out").mkdir()
    for i, name in enumerate("abc"):
        vistrel.write(f"{name}.dng", noise((24, 32), 12, i), 12, phase="gbrg")
    return tmp_path


@pytest.mark.parametrize(
    "options, exception, argument",
    [
        ({"algorithm": "best"}, vistrel.InvalidValue, "algorithm"),
        ({"region": (0, 0, 33, 24)}, vistrel.InvalidValue, "conversion.region"),
        ({"develop": True, "look": "best"}, vistrel.InvalidValue, "look"),
        ({"kind": "gif"}, vistrel.InvalidValue, "path"),
        ({"read": {"phase": "x"}}, vistrel.InvalidValue, "phase"),
        ({"no_option": 1}, TypeError, None),
    ],
)
def test_options_for_files_are_rejected_at_once(options, exception, argument, folder):
    with pytest.raises(exception) as raised:
        vistrel.dask.convert_files(["none.dng", "a.dng"], "out", **options)
    assert getattr(raised.value, "argument", None) == argument
    assert not os.listdir("out")


def test_files_that_fail_are_reported(folder):
    (folder / "b.dng").write_bytes(b"no frame")
    names = ["a.dng", "none.dng", "b.dng", "c.dng"]
    rows = vistrel.dask.convert_files(names, "out", chunk=2).compute(scheduler="sync")
    assert rows["made"].tolist() == [True, False, False, True]
    assert [bool(text) for text in rows["error"]] == [False, True, True, False]
    assert "none.dng" in rows["error"][1] and "frame" in rows["error"][2]
    assert rows["bytes"][1:3].tolist() == [0, 0]
    assert sorted(os.listdir("out")) == ["a.png", "c.png"]


def test_samples_are_no_fault_of_options(folder):
    rows = vistrel.dask.convert_files(["a.dng", "b.dng"], "out", read={"bits": 8})
    errors = rows.compute(scheduler="sync")["error"]
    assert all("8 bits" in text for text in errors)


def test_relative_names_are_those_of_the_caller(folder, monkeypatch):
    (folder / "manifest").write_text("a.dng\nb.dng\n")
    reports = [vistrel.dask.convert_files("manifest", "out"),
               vistrel.dask.convert_files(["c.dng"], "out")]
    monkeypatch.chdir("/")
    assert all(rows["made"].all() for rows in da.compute(*reports, scheduler="sync"))
    assert len(list((folder / "out").iterdir())) == 3
