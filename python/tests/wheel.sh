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
grep -q '^vistrel/py.typed$' contents
grep -q '^vistrel/__init__.pyi$' contents
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

# Both libraries are the wheel's.
maps = open("/proc/self/maps").read().split()
ours = {path for path in maps if "vistrel" in path.rsplit("/", 1)[-1] or "_core.cpython" in path}
ours = {path for path in ours if "numpy" not in path}
assert len(ours) == 2 and all(path.startswith(sys.prefix) for path in ours), ours
TEXT
