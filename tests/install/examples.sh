# examples.sh FOLDER [PROGRAM]: runs the built examples in FOLDER. What they print is worked out by
# hand; the picture that they make is the one that the program makes.
set -euo pipefail
folder=$(realpath "$1")
program=${2-}
examples=$(realpath "$(dirname "$0")/../../examples")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

expect() {  # WANTED EXAMPLE
  local got
  got=$("$folder/$2")
  [[ "$got" == $1 ]] || { echo "$2: expected \"$1\", got \"$got\""; exit 1; }
}

expect "blue 40, green 40, red 200" plain
expect "256 of 256 frames are right" stream
expect "*algorithm vng: up to 10 bits*format BGR24: 3 bytes a pixel*level base*" list

[ -x "$program" ] || exit 0
"$program" scene -s 96x64 --bits 12 --phase gbrg -o scene.pgm
"$program" convert scene.pgm --phase gbrg --bits 12 -o program.ppm
"$folder/convert" scene.pgm gbrg 12 example.ppm
cmp program.ppm example.ppm
if "$folder/convert" scene.pgm gbrg 17 rejected.ppm 2>text; then exit 1; fi
grep -q "17" text

# An array job of three tasks, one of which runs twice, makes every picture once.
mkdir frames
for i in $(seq 7); do "$program" unpack scene.pgm --phase gbrg -o "frames/$i.dng" 2>/dev/null; done
task() {  # ID
  PATH=$(dirname "$program"):$PATH SLURM_CPUS_PER_TASK=2 SLURM_ARRAY_TASK_ID=$1 \
    SLURM_ARRAY_TASK_MIN=10 SLURM_ARRAY_TASK_MAX=20 SLURM_ARRAY_TASK_STEP=5 \
    SLURM_ARRAY_TASK_COUNT=3 sh "$examples/slurm.sh" frames pictures >/dev/null 2>&1
}
task 15
[ "$(ls pictures)" = "$(printf '%s\n' 2.png 5.png)" ]
before=$(stat -c %Y%i pictures/2.png)
for id in 10 15 20; do task $id; done
[ "$before" = "$(stat -c %Y%i pictures/2.png)" ]
"$program" develop frames -o whole >/dev/null 2>&1
diff -r pictures whole
# Pieces of a pipe end anywhere in a row.
tail -c 12288 scene.pgm | dd conv=swab status=none >frame.raw
{ head -c 5001 frame.raw; sleep 0.1; tail -c +5002 frame.raw; cat frame.raw; } |
  "$folder/pipe" 96 64 gbrg 12 >pipe.rgb
tail -c 18432 program.ppm >program.rgb
cat program.rgb program.rgb | cmp - pipe.rgb
if head -c 5001 frame.raw | "$folder/pipe" 96 64 gbrg 12 >pipe.rgb 2>text; then exit 1; fi
grep -q "half a frame" text

# A camera that isn't there.
if [ -n "${VISTREL_VIDEO_DEVICE-}" ]; then
  "$2" scene -s 96x64 --bits 10 --phase rggb -o camera.pgm
  "$2" convert camera.pgm --phase rggb --bits 10 -o program.ppm
  tail -c 12288 camera.pgm >camera.raw
  VISTREL_FRAME=camera.raw LD_PRELOAD=$VISTREL_VIDEO_DEVICE \
    "$folder/v4l2" /dev/video-stand-in rggb example.ppm
  cmp program.ppm example.ppm
  if VISTREL_FRAME=camera.raw LD_PRELOAD=$VISTREL_VIDEO_DEVICE \
    "$folder/v4l2" /dev/video-stand-in rgbg example.ppm 2>text; then exit 1; fi
  grep -q rgbg text
  if "$folder/v4l2" /dev/null rggb example.ppm 2>text; then exit 1; fi
fi
