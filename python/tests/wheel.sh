# wheel.sh BUILD SCRATCH PYTHON: makes a wheel of a finished build, installs it into an environment
# of its own, and converts there with nothing of ours but the wheel in reach.
set -euo pipefail
export VISTREL_BUILD=$1
scratch=$2 python=$3
root=$(realpath "$(dirname "$0")/..")

# A copy of the sources, so that setuptools' own files stay out of the tree.
rm -rf "$scratch"
mkdir -p "$scratch/tree/include/vistrel"
cp "$root/../include/vistrel/vistrel_version.h" "$scratch/tree/include/vistrel"
cp -r "$root" "$scratch/tree/python"
cd "$scratch/tree/python"
"$python" -m build --wheel --no-isolation --outdir "$scratch" >"$scratch/log" 2>&1 ||
  { cat "$scratch/log"; exit 1; }

cd "$scratch"
"$python" -m zipfile -l ./*.whl | awk '{ print $1 }' >contents
grep -q '^vistrel/libvistrelhost\.so\.[0-9]*$' contents
grep -q '^vistrel/_core\..*\.so$' contents
grep -q '^vistrel/_files\..*\.so$' contents
grep -q '^vistrel/libtiff\.so\.[0-9]*$' contents
if grep -E 'cfitsio|libc\.so|libstdc' contents; then exit 1; fi
grep -q '^vistrel/py.typed$' contents
grep -q '^vistrel/_conversion.pyi$' contents
if grep -q test contents; then cat contents; exit 1; fi

"$python" -m venv --system-site-packages environment
environment/bin/pip install -q --no-index --no-deps ./*.whl
rm -rf tree
cd environment
env -u PYTHONPATH -u LD_LIBRARY_PATH bin/python -I - "$scratch" <<'TEXT'
import importlib.metadata
import sys

import numpy
import vistrel

raw = numpy.full((48, 64), 2048, numpy.uint16)
assert vistrel.convert(raw, "grbg", 12)[0, 0].tolist() == [128, 128, 128]
assert vistrel.__version__ == importlib.metadata.version("vistrel")
assert vistrel.unpack(b"\1\2", "Mono8", 2, 1).tolist() == [[1, 2]]

def loaded(*names):
    """Libraries of this process, by the beginnings of their names."""
    maps = open("/proc/self/maps").read().split()
    return {p for p in maps if "numpy" not in p and p.rsplit("/", 1)[-1].startswith(names)}


# All libraries are the wheel's, and those for files wait until they are needed.
ours = loaded("libvistrel", "_core.", "_files.", "libpng", "libtiff")
assert len(ours) == 2 and all(path.startswith(sys.prefix) for path in ours), ours
for name in ("a.pgm", "a.png", "a.dng"):
    vistrel.write(name, raw, bits=12, phase="grbg")
    frame = vistrel.read(name, "grbg")
    assert (frame.samples == raw).all() and frame.bits == 12, (name, frame)
vistrel.write("a.tif", frame.develop())
ours = loaded("libvistrel", "_core.", "_files.", "libpng", "libtiff", "libjpeg", "libwebp", "libLerc")
assert len(ours) == 8 and all(path.startswith(sys.prefix) for path in ours), ours

with open("a.fits", "wb") as file:
    file.write(b"SIMPLE  =                    T".ljust(2880))
for name in ("a.fits", "a.nef"):
    open(name, "ab").write(b"x")
    try:
        vistrel.read(name)
    except ImportError as error:
        assert "python3-vistrel" in str(error)
    else:
        raise AssertionError(name)
TEXT
