# build.sh PACKAGES BUILD VERSION: packs the build twice and expects the same bytes.
set -euo pipefail
packages=$1 build=$2 version=$3
command -v dh >/dev/null || { echo "skipped: debhelper is not installed"; exit 77; }
root=$(realpath "$(dirname "$0")/../..")

"$root/debian/pack" "$build" "$packages"
cd "$packages"
for name in libvistrel1 libvistrelhost1 libvistrel-dev vistrel-tools python3-vistrel \
  gstreamer1.0-vistrel; do
  file=$(echo "${name}_${version}-1_"*.deb)
  [ -f "$file" ] || { echo "there is no package $name of version $version-1"; ls; exit 1; }
done

field() { dpkg-deb -f "$1"_*.deb "$2"; }
# libvistrelhost contains the engine.
if grep "libvistrel1 " <<<"$(field libvistrelhost1 Depends)"; then exit 1; fi
grep -q "libvistrelhost1 (>= $version)" <<<"$(field vistrel-tools Depends)"
grep -q "libvistrelhost1 (>= $version)" <<<"$(field python3-vistrel Depends)"
grep -q "libvistrelhost1 (>= $version)" <<<"$(field gstreamer1.0-vistrel Depends)"
# Only a plug-in needs LibRaw, and the program works without it.
grep -q libraw <<<"$(field vistrel-tools Recommends)"
if grep libraw <<<"$(field vistrel-tools Depends)"; then exit 1; fi

sha256sum -- *.deb >first
"$root/debian/pack" "$build" "$packages/again"
(cd again && sha256sum --quiet -c ../first)
rm -rf again
