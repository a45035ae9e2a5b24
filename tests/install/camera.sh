# camera.sh EXAMPLE: runs the example on the frames of a simulated GigE Vision camera. Its mono
# pictures are the frames; the mean of their samples is that of the simulator's pattern, which moves
# through all values.
set -euo pipefail
example=$1
command -v arv-fake-gv-camera-0.8 >/dev/null || { echo "skipped: no simulator"; exit 77; }
arv-fake-gv-camera-0.8 -i 127.0.0.1 -s "VX$$" >/dev/null &
camera=$!
trap 'kill $camera' EXIT

# Without the right to packet sockets, frames come by UDP, as they do for ordinary users.
run=()
if [ "$(id -u)" = 0 ]; then run=(setpriv --bounding-set -net_raw --inh-caps -net_raw); fi

receive() {  # FORMAT
  local try
  for try in $(seq 20); do
    if "${run[@]}" "$example" "Aravis-Fake-VX$$" "$1" 160 120 20 >means 2>text; then return; fi
    sleep 0.2
  done
  cat text
  exit 1
}
cd "$(mktemp -d)"
for format in Mono8 Mono16 BayerRG8 BayerGR8 BayerBG8 BayerGB8; do
  receive "$format"
  [ "$(wc -l <means)" = 20 ]
  awk -v format="$format" '$1 < 90 || $1 > 165 { print format, "has a mean of", $1; exit 1 }' means
done

# Every name that a format has in PFNC, and no other one.
if "$example" nothing BayerRG9 160 120 1 2>text; then exit 1; fi
grep -q '^unknown format BayerRG9; ' text || { cat text; exit 1; }
sed 's/.*: //' text | tr ' ' '\n' | sort >known
for colour in Mono BayerGR BayerBG BayerRG BayerGB; do
  for rest in 8 10 12 14 16 10p 12p 14p 10Packed 12Packed; do echo $colour$rest; done
done | sort >wanted
diff wanted known
for format in Mono10Packed BayerGB14p; do  # known, but there is no such camera
  if "$example" nothing "$format" 160 120 1 2>text; then exit 1; fi
  if grep -q 'unknown format' text; then cat text; exit 1; fi
done
rm -r "$PWD"
