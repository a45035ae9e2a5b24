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
awk 'BEGIN { RS = ""; ORS = "\n\n" } !/^Package: (libvistrel|vistrel)/' /var/lib/dpkg/status \
  >"$admin/status"
dpkg-query --admindir="$admin" -W -f '${binary:Package}\n' |
  (cd "$admin/info" && sed 's/$/.list/' | xargs touch)
dpkg --root="$root" --force-not-root --log="$root/log" --install "$packages"/*.deb
dpkg --root="$root" --verify libvistrel1 libvistrelhost1 libvistrel-dev vistrel-tools

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
for name in convert list plain; do
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
