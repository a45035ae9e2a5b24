"""Frames and pictures in files."""

import os
import pickle
import subprocess
import warnings

import numpy as np
import pytest
import vistrel
from frames import noise

PROGRAM = os.environ["VISTREL"]
RAW = noise((24, 32), 12)


def run(*arguments):
    return subprocess.run([PROGRAM, *arguments], check=True, stdout=subprocess.PIPE).stdout


def pgm(path, samples, maxval, comment=""):
    head = f"P5\n{comment}{samples.shape[1]} {samples.shape[0]}\n{maxval}\n".encode()
    path.write_bytes(head + samples.astype(">u2" if maxval > 255 else "u1").tobytes())


def test_pgm(tmp_path):
    pgm(tmp_path / "a.pgm", RAW, 4095)
    frame = vistrel.read(tmp_path / "a.pgm", "rggb")
    assert np.array_equal(frame.samples, RAW) and frame.samples.dtype == np.uint16
    assert (frame.phase, frame.bits, frame.align, frame.format) == ("rggb", 12, "low", "PGM")
    assert (frame.frames, frame.orientation, frame.crop) == (1, 1, None)
    assert frame.look == vistrel.Look()
    assert set(frame.camera.values()) == {None}
    assert np.array_equal(frame.convert(), vistrel.convert(RAW, "rggb", 12))
    assert np.array_equal(frame.develop(), vistrel.develop(RAW, "rggb", 12))


def test_tiff_by_another_program(tmp_path):
    tifffile = pytest.importorskip("tifffile")
    tifffile.imwrite(tmp_path / "a.tif", RAW << 4)
    frame = vistrel.read(tmp_path / "a.tif", bits=12, align="high")
    assert np.array_equal(frame.samples, RAW << 4)
    assert (frame.phase, frame.bits, frame.align) == (None, 12, "high")
    with pytest.raises(ValueError, match="phase") as raised:
        frame.convert()
    assert raised.value.code == vistrel.Status.BAD_PHASE


def test_fits_by_another_program(tmp_path):
    fits = pytest.importorskip("astropy.io.fits")
    cube = np.stack([RAW, RAW + 1, RAW + 2])
    header = fits.Header({"BAYERPAT": "GRBG", "ROWORDER": "TOP-DOWN", "EXPTIME": 30.5})
    fits.PrimaryHDU(cube, header).writeto(tmp_path / "a.fits")
    for k in range(3):
        frame = vistrel.read(tmp_path / "a.fits", bits=12, frame=k)
        assert np.array_equal(frame.samples, cube[k])
        assert (frame.phase, frame.frames, frame.camera["exposure_time"]) == ("grbg", 3, 30.5)
    with pytest.raises(ValueError, match="^frame 3: the file has 3 frames"):
        vistrel.read(tmp_path / "a.fits", bits=12, frame=3)
    fits.PrimaryHDU(RAW.astype(np.float32) / 4096).writeto(tmp_path / "b.fits")
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        real = vistrel.read(tmp_path / "b.fits", range=(0, 1)).samples
    assert np.array_equal(real, np.floor(RAW / 4096 * 65535 + 0.5).astype(np.uint16))


def test_headerless(tmp_path):
    (tmp_path / "a.raw").write_bytes(b"head" + RAW.astype(">u2").tobytes())
    frame = vistrel.read(tmp_path / "a.raw", "bggr", 12, size=(32, 24), byte_order="big", skip=4)
    assert np.array_equal(frame.samples, RAW)
    assert (frame.phase, frame.bits) == ("bggr", 12)
    packed = noise((24 * 48,), 8)
    packed.tofile(tmp_path / "b.raw")
    frame = vistrel.read(tmp_path / "b.raw", size=(32, 24), pixel_format="BayerGB12p")
    assert np.array_equal(frame.samples, vistrel.unpack(packed, "BayerGB12p", 32, 24))
    assert (frame.phase, frame.bits) == ("gbrg", 12)


def test_names(tmp_path):
    pgm(tmp_path / "rose_12b_gbrg.pgm", RAW, 65535)
    frame = vistrel.read(tmp_path / "rose_12b_gbrg.pgm", from_name=True)
    assert (frame.phase, frame.bits) == ("gbrg", 12)


def test_names_that_are_not_text(tmp_path):
    path = os.fsdecode(os.fsencode(tmp_path) + b"/\xff.pgm")
    vistrel.write(path, RAW, 12, phase="rggb")
    assert np.array_equal(vistrel.read(path, "rggb").samples, RAW)
    with pytest.raises(vistrel.InvalidValue, match="^pixel_format "):
        vistrel.read(path, size=(2, 2), pixel_format="\ud800")


def test_messages_are_warnings(tmp_path):
    pgm(tmp_path / "a.pgm", RAW, 4095)
    with pytest.warns(UserWarning, match="a.pgm: using 14 bits; the file says 12"):
        vistrel.read(tmp_path / "a.pgm", bits=14)
    pgm(tmp_path / "b.pgm", RAW, 65535)
    with pytest.warns(UserWarning, match="; bits 12 would use those"):
        vistrel.read(tmp_path / "b.pgm")


@pytest.fixture(scope="module")
def scene(tmp_path_factory):
    """A DNG with levels, colours and the settings of a camera."""
    path = tmp_path_factory.mktemp("scene") / "scene.dng"
    run("scene", "--camera", "-s", "160x120", "-o", path)
    return path


def test_development_uses_what_the_file_says(scene, tmp_path):
    frame = vistrel.read(scene)
    assert frame.look.black and frame.look.white and frame.look.gains and frame.look.matrix
    assert frame.camera["model"]
    plain = vistrel.develop(frame.samples, frame.phase, frame.bits)
    for look in ("auto", "srgb,exposure=1.5", "black=10", "linear,gains=1:2:3", "astro"):
        run("develop", scene, "--look", look, "-o", tmp_path / "a.npy", "--overwrite")
        expected = np.load(tmp_path / "a.npy")
        assert np.array_equal(frame.develop(look), expected), look
        assert not np.array_equal(plain, expected)
    for look in ("mode=linear", "_parts=1"):
        with pytest.raises(vistrel.InvalidValue):
            frame.develop(look)
    with pytest.raises(vistrel.InvalidType, match="^look int: a str or a Look$"):
        frame.develop(3)
    given = vistrel.Look(mode="srgb", exposure=1.5)
    assert np.array_equal(frame.develop(given), frame.develop("srgb,exposure=1.5"))


def test_development_turns_and_crops(tmp_path):
    """As tags say, unless the caller says something else."""
    tifffile = pytest.importorskip("tifffile")
    tags = [(274, 3, 1, 6), (50706, 1, 4, bytes([1, 4, 0, 0])), (33421, 3, 2, (2, 2)),
            (33422, 1, 4, bytes([0, 1, 1, 2])), (50719, 4, 2, (4, 2)), (50720, 4, 2, (20, 16))]
    tifffile.imwrite(tmp_path / "a.dng", RAW, photometric=32803, extratags=tags)
    frame = vistrel.read(tmp_path / "a.dng", bits=12)
    assert (frame.orientation, frame.crop) == (6, (4, 2, 20, 16))
    run("develop", tmp_path / "a.dng", "--bits", "12", "-o", tmp_path / "a.npy")
    picture = frame.develop()
    assert picture.shape == (20, 16, 3)
    assert np.array_equal(picture, np.load(tmp_path / "a.npy"))
    assert frame.develop(orientation=1, region=None).shape == (24, 32, 3)


@pytest.mark.parametrize("kind", ["pgm", "png", "tif", "dng", "npy", "pam"])
@pytest.mark.parametrize("bits", [8, 10, 16])
def test_samples_survive(kind, bits, tmp_path):
    samples = noise((24, 32), bits)
    path = tmp_path / f"a.{kind}"
    options = {"phase": "gbrg"} if kind in ("pgm", "png", "dng", "npy") else {}
    vistrel.write(path, samples, bits=bits, **options)
    if kind == "npy":
        assert np.array_equal(np.load(path), samples)
        return
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        frame = vistrel.read(path)
    stretched = kind == "tif" and bits == 10  # to the 16 bits of the file, which says nothing of 10
    assert np.array_equal(frame.samples, samples << 6 | samples >> 4 if stretched else samples)
    assert frame.bits == (16 if stretched else bits)


def test_levels_of_a_dng(tmp_path):
    vistrel.write(tmp_path / "a.dng", RAW, 12, phase="bggr", black=(64, 65, 66, 67), white=4000)
    frame = vistrel.read(tmp_path / "a.dng")
    assert (frame.phase, frame.bits) == ("bggr", 12)
    assert (frame.look.black, frame.look.white) == ((64, 65, 66, 67), 4000)


def test_colours_are_in_the_order_of_the_array(tmp_path):
    cv2 = pytest.importorskip("cv2")
    image = noise((5, 7, 3), 8)
    for kind in ("png", "tif", "ppm"):
        vistrel.write(tmp_path / f"a.{kind}", image)
        assert np.array_equal(cv2.imread(str(tmp_path / f"a.{kind}"))[..., ::-1], image)
    deep = noise((5, 7, 3), 16)
    vistrel.write(tmp_path / "deep.png", deep)
    assert np.array_equal(cv2.imread(str(tmp_path / "deep.png"), -1)[..., ::-1], deep)


def test_encodings(tmp_path):
    image = noise((5, 7, 3), 8)
    for encoding, chunk in (("srgb", b"sRGB"), ("linear", b"gAMA"), ("unknown", None)):
        vistrel.write(tmp_path / "a.png", image, encoding=encoding)
        data = (tmp_path / "a.png").read_bytes()
        assert (chunk in data) if chunk else (b"sRGB" not in data and b"gAMA" not in data)


@pytest.mark.parametrize("image", [RAW[::-1], RAW[:, 3:20], RAW.astype(">u2"), RAW.T, RAW[::2]])
def test_kinds_of_arrays(image, tmp_path):
    vistrel.write(tmp_path / "a.pgm", image, bits=12)
    assert np.array_equal(vistrel.read(tmp_path / "a.pgm", "mono").samples, image)


@pytest.mark.parametrize(
    "name, image, options, exception, code",
    [
        ("a.xyz", RAW, {}, ValueError, "BAD_FORMAT"),
        ("a.png", RAW.astype(np.float32), {}, TypeError, "BAD_FORMAT"),
        ("a.png", RAW.astype(np.int16), {}, TypeError, "BAD_FORMAT"),
        ("a.png", RAW[0], {}, ValueError, "BAD_SIZE"),
        ("a.png", RAW[:0], {}, ValueError, "BAD_SIZE"),
        ("a.png", np.zeros((4, 4, 2), np.uint8), {}, ValueError, "BAD_SIZE"),
        ("a.png", RAW, {"bits": 8}, ValueError, "BAD_BITS"),
        ("a.png", RAW, {"bits": 17}, ValueError, "BAD_BITS"),
        ("a.png", RAW, {"bits": 10}, ValueError, "EXCESS_SAMPLE"),
        ("a.png", RAW, {"encoding": "log"}, ValueError, "BAD_TRANSFER"),
        ("a.ppm", RAW, {}, ValueError, "BAD_FORMAT"),
        ("a.jpg", RAW, {}, ValueError, "BAD_FORMAT"),
        ("a.dng", RAW, {}, ValueError, "BAD_FORMAT"),
        ("a.dng", RAW, {"phase": "rgbg"}, ValueError, "BAD_PHASE"),
        ("a.dng", RAW, {"phase": "rggb", "black": 64}, TypeError, "BAD_BLACK"),
        ("a.jpg", RAW, {"phase": "rggb"}, ValueError, "BAD_FORMAT"),
    ],
)
def test_pictures_that_are_rejected(name, image, options, exception, code, tmp_path):
    with pytest.raises(exception) as raised:
        vistrel.write(tmp_path / name, image, **options)
    assert raised.value.code == vistrel.Status[code]
    assert not list(tmp_path.iterdir())


def test_files_that_fail(tmp_path, scene):
    with pytest.raises(FileNotFoundError):
        vistrel.read(tmp_path / "missing.pgm")
    with pytest.raises(OSError):
        vistrel.read(tmp_path)
    with pytest.raises(OSError):
        vistrel.write(tmp_path / "missing/a.png", RAW)
    (tmp_path / "empty.pgm").touch()
    with pytest.raises(ValueError, match="empty"):
        vistrel.read(tmp_path / "empty.pgm")
    (tmp_path / "a.raw").write_bytes(b"x" * 100)
    with pytest.raises(ValueError, match="; size WxH reads"):
        vistrel.read(tmp_path / "a.raw")
    with pytest.raises(ValueError, match="^bits: a headerless"):
        vistrel.read(tmp_path / "a.raw", size=(5, 5))
    with pytest.raises(ValueError, match="too short"):
        vistrel.read(tmp_path / "a.raw", bits=8, size=(50, 5))
    with pytest.raises(TypeError):
        vistrel.read(tmp_path / "a.raw", bits="8", size=(50, 5))


def test_damaged_files_are_rejected_or_read(scene, tmp_path):
    """Cut and changed anywhere in the header: a frame or an error of those that `read` names."""
    data = bytearray(scene.read_bytes())
    random = np.random.default_rng(4)
    rejected = 0
    for i in range(300):
        damaged = data[: random.integers(1, len(data))] if i % 3 == 0 else bytearray(data)
        for at in random.integers(0, min(len(damaged), 2000), 4):
            damaged[at] = random.integers(256)
        (tmp_path / "a.dng").write_bytes(damaged)
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            try:
                vistrel.read(tmp_path / "a.dng")
            except (ValueError, ImportError, OSError):
                rejected += 1
    assert rejected > 100


def test_frames_can_be_sent_to_processes(scene):
    frame = vistrel.read(scene)
    copy = pickle.loads(pickle.dumps(frame))
    assert np.array_equal(copy.develop(), frame.develop())
    assert (copy.look, copy.camera, copy.phase) == (frame.look, frame.camera, frame.phase)


def test_names_have_no_null_characters(tmp_path):
    for name in ("rose\0.png", b"rose\0.png"):
        with pytest.raises(ValueError, match="null character"):
            vistrel.write(os.path.join(os.fsencode(tmp_path), os.fsencode(name)),
                          np.zeros((4, 6), np.uint8))
    assert not os.listdir(tmp_path)


def test_levels_that_make_no_sense_are_ignored(tmp_path):
    vistrel.write(tmp_path / "a.dng", RAW, 12, phase="rggb", black=(3000, 1, 1, 1), white=2000)
    with pytest.warns(UserWarning, match="not below white level 2000; not used"):
        frame = vistrel.read(tmp_path / "a.dng")
    assert np.array_equal(frame.samples, RAW) and frame.look.black is None


@pytest.mark.parametrize("name", ["a.pgm", "a.png", "a.dng"])
def test_own_files_are_read_without_a_warning(name, tmp_path):
    vistrel.write(tmp_path / name, RAW, 12, phase="grbg")
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        assert vistrel.read(tmp_path / name).phase == "grbg"


def test_a_dng_has_the_look_of_its_camera(scene, tmp_path):
    """What was read of one camera is read of the copy, but for the rounding of its matrices."""
    frame = vistrel.read(scene)
    vistrel.write(tmp_path / "a.dng", frame.samples, frame.bits, phase=frame.phase, look=frame.look)
    copy = vistrel.read(tmp_path / "a.dng")
    assert (copy.look.black, copy.look.white) == (frame.look.black, frame.look.white)
    assert np.allclose(copy.look.gains, frame.look.gains, atol=2 / 4096)
    assert np.allclose(copy.look.matrix, frame.look.matrix, atol=0.01)
    for black, expected in ((None, (64,) * 4), ((1, 2, 3, 4), (1, 2, 3, 4))):
        vistrel.write(tmp_path / "b.dng", RAW, 12, phase="rggb", black=black,
                      look=vistrel.Look(black=64, white=4000))
        other = vistrel.read(tmp_path / "b.dng").look
        assert (other.black, other.white, other.gains) == (expected, 4000, None)


@pytest.mark.parametrize(
    "look, exception, argument",
    [("auto", vistrel.InvalidType, "look"),
     (vistrel.Look(gains=(1, 1, 1), matrix=(1,) * 9), vistrel.InvalidValue, "look.matrix")],
)
def test_looks_that_no_dng_can_have(look, exception, argument, tmp_path):
    with pytest.raises(exception) as raised:
        vistrel.write(tmp_path / "a.dng", RAW, 12, phase="rggb", look=look)
    assert raised.value.argument == argument
    assert not os.listdir(tmp_path)
