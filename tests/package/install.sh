# install.sh PACKAGES ROOT CC CXX: installs the packages into a clean root, builds the examples
# against it, by pkg-config and by CMake, and runs them and the program from there.
set -euo pipefail
packages=$1 root=$2 cc=$3 cxx=$4
here=$(realpath "$(dirname "$0")")
export PATH=$PATH:/usr/sbin:/sbin

# This machine's packages count as installed there, so that dependencies are checked.
rm -rf "$root"
admin=$root/var/lib/dpkg
mkdir -p "$admin/info" "$admin/updates" "$admin/triggers"
awk 'BEGIN { RS = ""; ORS = "\n\n" } !/^Package: (libvistrel|vistrel|python3-vistrel|gstreamer1.0-vistrel)/' /var/lib/dpkg/status \
  >"$admin/status"
dpkg-query --admindir="$admin" -W -f '${binary:Package}\n' |
  (cd "$admin/info" && sed 's/$/.list/' | xargs touch)
into_root=(dpkg --root="$root" --force-not-root --log="$root/log")
"${into_root[@]}" --install "$packages"/{lib,vistrel-,gstreamer}*.deb
# Its script compiles modules, for which that root would need Python.
"${into_root[@]}" --unpack "$packages"/python3-vistrel*.deb
dpkg --root="$root" --verify libvistrel1 libvistrelhost1 libvistrel-dev vistrel-tools \
  python3-vistrel gstreamer1.0-vistrel

vistrel=$root/usr/bin/vistrel
libraries=$(dirname "$(echo "$root"/usr/lib/*/libVistrel.so)")
export LD_LIBRARY_PATH=$libraries PKG_CONFIG_PATH=$libraries/pkgconfig
"$vistrel" --version
if ldd "$vistrel" | grep -i vistrel | grep -vF "=> $libraries/"; then exit 1; fi
zcat "$root/usr/share/man/man1/vistrel.1.gz" | grep -q convert
grep -q images/curves.svg "$root/usr/share/doc/vistrel/choosing.md"
test -f "$root/usr/share/doc/vistrel/images/curves.svg"

examples=$root/usr/share/doc/libvistrel-dev/examples
mkdir "$root/by-flags" "$root/by-cmake"
for name in convert list pipe plain v4l2; do
  "$cc" "$examples/$name.c" $(pkg-config --cflags --libs vistrel vistrelhost) \
    -o "$root/by-flags/$name"
done
"$cxx" -std=c++17 "$examples/stream.cpp" $(pkg-config --cflags --libs vistrelhost) -pthread \
  -o "$root/by-flags/stream"
bash "$here/../install/examples.sh" "$root/by-flags" "$vistrel"

cmake -S "$examples" -B "$root/by-cmake" -D CMAKE_PREFIX_PATH="$root/usr" \
  -D CMAKE_C_COMPILER="$cc" -D CMAKE_CXX_COMPILER="$cxx" >/dev/null
cmake --build "$root/by-cmake"
bash "$here/../install/examples.sh" "$root/by-cmake" "$vistrel"

# Python finds the package where Debian's packages lie, and its library.
PYTHONPATH=$root/usr/lib/python3/dist-packages /usr/bin/python3 - "$root" <<'TEXT'
import sys

import numpy
import vistrel

assert vistrel.__file__.startswith(sys.argv[1]), vistrel.__file__
assert vistrel.convert(numpy.full((48, 64), 128, numpy.uint8), "rggb")[5, 5].tolist() == [128] * 3
cards = ["SIMPLE  = T", "BITPIX  = 8", "NAXIS   = 2", "NAXIS1  = 4", "NAXIS2  = 2", "END"]
with open(sys.argv[1] + "/a.fits", "wb") as file:
    file.write("".join(f"{card:<80}" for card in cards).encode().ljust(2880) + bytes(range(8)).ljust(2880))
assert vistrel.read(sys.argv[1] + "/a.fits", "mono").samples.shape == (2, 4)
maps = open("/proc/self/maps").read().split()
libraries = {path for path in maps if "/libvistrelhost.so" in path}
assert libraries and all(path.startswith(sys.argv[1]) for path in libraries), libraries
TEXT

# GStreamer finds the element by its folder.
if command -v gst-launch-1.0 >/dev/null; then
  head -c 768 /dev/zero | tr '\0' '\200' >"$root/frame.raw"
  GST_REGISTRY=$root/registry GST_PLUGIN_PATH=$libraries/gstreamer-1.0 gst-launch-1.0 -q \
    filesrc location="$root/frame.raw" blocksize=768 ! video/x-bayer,format=rggb,width=32,height=24 ! \
    vistreldemosaic ! video/x-raw,format=GRAY8 ! filesink location="$root/picture.raw"
  cmp "$root/frame.raw" "$root/picture.raw"
fi
