# screen.sh PROGRAM PLUGINS: a picture reaches the screen, here a virtual one, sample for sample.
set -euo pipefail
vistrel=$(realpath "$1")
export GST_PLUGIN_PATH=$(realpath "$2") G_DEBUG=fatal-criticals
for program in Xvfb xwd xwdtopnm gst-launch-1.0; do
  command -v $program >/dev/null || { echo "skipped: $program is not installed"; exit 77; }
done
scratch=$(mktemp -d)
export GST_REGISTRY=$scratch/registry
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$scratch"' EXIT
cd "$scratch"

"$vistrel" scene -s 640x480 --bits 12 --phase rggb -o frame.pgm
tail -c 614400 frame.pgm | dd conv=swab status=none >frame.raw
caps="video/x-bayer,format=rggb12le,width=640,height=480,framerate=10/1"
gst-launch-1.0 -q multifilesrc location=frame.raw num-buffers=1 caps="$caps" ! \
  vistreldemosaic look=auto ! video/x-raw,format=RGB ! filesink location=wanted

mkfifo number
Xvfb -displayfd 3 -screen 0 640x480x24 -nolisten tcp 3>number >/dev/null 2>&1 &
read -r display <number
export DISPLAY=:$display
gst-launch-1.0 -q multifilesrc location=frame.raw loop=true caps="$caps" ! \
  vistreldemosaic look=auto ! video/x-raw,format=BGRx ! ximagesink >log 2>&1 &
for _ in $(seq 100); do
  sleep 0.1
  xwd -root -silent | xwdtopnm 2>/dev/null | tail -c 921600 >got
  if cmp -s wanted got; then exit 0; fi
done
cat log
echo "the screen has another picture"
exit 1
