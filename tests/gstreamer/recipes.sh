# recipes.sh PAGE PROGRAM PLUGINS: runs every pipeline of the page that is in a block of the language
# sh; that of a V4L2 camera where there is one that delivers a mosaic. Those that write files must write all frames.
set -euo pipefail
page=$(realpath "$1") vistrel=$(realpath "$2")
GST_PLUGIN_PATH=$(realpath "$3")
for program in arv-fake-gv-camera-0.8 gst-launch-1.0 ffprobe; do
  command -v $program >/dev/null || { echo "skipped: $program is not installed"; exit 77; }
done
scratch=$(mktemp -d)
export GST_PLUGIN_PATH GST_REGISTRY=$scratch/registry G_DEBUG=fatal-criticals
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$scratch"' EXIT
cd "$scratch"

frames=10
for n in $(seq -f %03g 0 $((frames - 1))); do
  "$vistrel" scene -s 640x480 --bits 12 --phase rggb --seed "$((10#$n + 1))" -o frame.pgm
  tail -c 614400 frame.pgm | dd conv=swab status=none >"frame$n.raw"
  rm frame.pgm
done
cat frame*.raw >film.raw
arv-fake-gv-camera-0.8 -i 127.0.0.1 -s GV01 >/dev/null &
# Without the right to packet sockets, frames come by UDP, as they do for ordinary users.
run=()
if [ "$(id -u)" = 0 ]; then run=(setpriv --bounding-set -net_raw --inh-caps -net_raw); fi
sleep 1

# Sources that this machine, or Debian, has no camera or caps for.
film='filesrc location=film.raw blocksize=614400 num-buffers=10'
hasMosaic() {
  [ -e /dev/video0 ] && command -v v4l2-ctl >/dev/null &&
    v4l2-ctl --device /dev/video0 --list-formats | grep -q "'RGGB'"
}

count=0
while read -r line; do
  if [[ $line == *v4l2src* ]] && ! hasMosaic; then
    echo "left out: $line"
    continue
  fi
  count=$((count + 1))
  line=${line//libcamerasrc/$film}
  if [[ $line == *12le* || $line == *GRAY16_LE* ]]; then
    line=${line//aravissrc camera-name=\"Aravis-Fake-GV01\" num-buffers=10/$film}
  fi
  line=${line//autovideosink/fakesink}
  line=${line//aravissrc /aravissrc packet-size=8000 }
  "${run[@]}" timeout 60 bash -c "$line" >log 2>&1 || { echo "$line"; cat log; exit 1; }
done < <(sed -n '/^```sh$/,/^```$/p' "$page" | grep '^gst-launch-1.0 ')
[ $count -ge 9 ] || { echo "$page has only $count pipelines"; exit 1; }

for film in film.y4m film.mkv; do
  found=$(ffprobe -v error -count_frames -show_entries stream=width,height,nb_read_frames \
    -of csv=p=0 $film)
  [ "$found" = "640,480,$frames" ] || { echo "$film: $found"; exit 1; }
done
[ "$(ls picture*.png | wc -l)" = $frames ]
[ "$(stat -c %s record.raw)" = $((160 * 120 * 50)) ]
echo "$count pipelines run"
