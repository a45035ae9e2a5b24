# What fish suggests for some incomplete command lines.
. "$(dirname "$0")/expect.sh"
need fish
export HOME=$scratch XDG_CONFIG_HOME=$scratch XDG_DATA_HOME=$scratch
cd "$scratch"
touch frame.pgm
fish --no-execute "$manual/fish/vistrel.fish"

offers() {  # LINE WANTED
  expect "$1" "$2" "$(fish --no-config -c "source '$manual/fish/vistrel.fish'; complete -C '$1'" |
    cut -f 1 | tr '\n' ' ')"
}

offers "vistrel conv" "convert "
offers "vistrel convert --phase g" "gbrg grbg "
offers "vistrel convert --fro" "--from-name "
offers "vistrel convert -a n" "near "
offers "vistrel convert fra" "frame.pgm "
offers "vistrel scene fra" ""
offers "vistrel cfa g" "gbrg grbg "
offers "vistrel develop --type pn" "png pnm "
exit $((faults > 0))
