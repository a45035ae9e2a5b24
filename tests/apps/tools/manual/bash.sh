# What bash suggests for some incomplete command lines.
. "$(dirname "$0")/expect.sh"
. "$manual/bash/vistrel"

offers() {  # WANTED WORD...
  local wanted=$1
  shift
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
  "$(complete -p vistrel | sed 's/.*-F \([^ ]*\) .*/\1/')" || true
  expect "$*" "$wanted" "${COMPREPLY[*]-}"
}

offers convert vistrel conv
offers --version vistrel --v
offers "grbg gbrg" vistrel convert --phase g
offers near vistrel convert a.pgm -a n
offers "2 3 4 5 6 light lighter lightest dark contrast" vistrel convert --curve ""
offers --from-name vistrel convert a.pgm --fro
offers "" vistrel convert a
offers "" vistrel convert -o ""
offers "" vistrel nonsense --
offers "BayerRG12 BayerRG12Packed BayerRG12p" vistrel convert --pixfmt BayerRG12
offers "png pam ppm pgm pnm" vistrel develop --type p
offers "BayerGB16" vistrel formats BayerGB16
offers "grbg gbrg" vistrel cfa g
offers "" vistrel bench --rounds ""
exit $((faults > 0))
