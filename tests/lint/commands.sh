# commands.sh PROGRAM FILE...: runs every command line of the program in the files, from code spans
# and code blocks, in a folder with the frames that they name. All must succeed.
set -euo pipefail
vistrel=$(realpath "$1")
shift
files=("$@")
commands=$(for file in "${files[@]}"; do
  # A span in backquotes, or a line of a block, with \ at its end continued.
  sed -e ':a' -e '/\\$/N; s/\\\n//; ta' "$file" |
    grep -oE '(^|`)vistrel [a-z][^`]*' | sed 's/^`//'
done | sort -u)
command -v ffmpeg >/dev/null || commands=$(grep -v '| ffmpeg ' <<<"$commands")
count=$(wc -l <<<"$commands")
[ "$count" -ge 10 ] || { echo "found only $count commands"; exit 1; }

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
mkdir bin frames kodak night pictures
ln -s "$vistrel" bin/vistrel
export PATH=$scratch/bin:$PATH
for name in frame rose frames/a frames/b; do
  vistrel scene -s 640x480 --bits 12 --phase rggb -o $name.pgm
done
vistrel scene -s 640x480 --camera -o frame.dng
# Content determines the kind of a file.
for name in rose.dng scene.dng dark.pgm night.fits night/a.fits m31.fits light.fits dark.fits flat.fits; do
  cp frame.dng $name
done
echo 10 20 | tee hot.txt >bad.txt
seq 0 1023 | awk '{ print int($1 / 4) }' >gamma.txt
cat frame.pgm rose.pgm >film.pgm
vistrel scene -s 640x480 --bits 16 -o deep.pgm
tail -c $((640 * 480 * 2)) deep.pgm >in.raw
head -c $((640 * 480)) in.raw >in8.raw
head -c $((1280 * 960 * 2)) /dev/zero >camera.raw
{ head -c 512 /dev/zero; cat camera.raw; } >cam.raw
vistrel scene -s 160x120 --bits 8 --phase rggb -o true.pgm
vistrel convert true.pgm --phase rggb -o true.png
cp true.png photo.png
cp true.png kodak/true.png
head -c $((640 * 480 * 3 / 2)) in.raw >packed.raw
cat packed.raw packed.raw packed.raw >frames.raw
{ head -c 512 in.raw; cat in.raw; } >header.raw

faults=0
while read -r command; do
  if ! bash -c "$command" >log 2>&1; then
    echo "$command"
    cat log
    faults=$((faults + 1))
  fi
done <<<"$commands"
echo "$((count - faults)) of $count commands succeed"
exit $((faults > 0))
