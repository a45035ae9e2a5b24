# How zsh completes some command lines, typed at a terminal and followed by a tab.
. "$(dirname "$0")/expect.sh"
need zsh
export HOME=$scratch ZDOTDIR=$scratch TERM=dumb
zsh -n "$manual/zsh/_vistrel"

cat >"$scratch/typist" <<'TEXT'
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1='ready'; fpath=($1 \$fpath)
  autoload -Uz compinit && compinit -D -u; vistrel() { print -r -- \"<\$*>\"; }; print set-up"
zpty -r -m shell line '*set-up*set-up*ready*' || exit 1
zpty -w shell "$2"$'\t'
zpty -r -m shell line '*<*>*'
print -r -- "${${line##*<}%%>*}"
TEXT

completes() {  # LINE WANTED
  expect "$1" "$2" "$(timeout 20 zsh -f "$scratch/typist" "$manual/zsh" "$1" 2>&1 | tail -n 1)"
}

completes "vistrel conv" "convert"
completes "vistrel convert --fro" "convert --from-name"
completes "vistrel convert -a nea" "convert -a near"
completes "vistrel convert --pixfmt BayerRG12Pa" "convert --pixfmt BayerRG12Packed"
completes "vistrel cfa gb" "cfa gbrg"
completes "vistrel scene --phase grb" "scene --phase grbg"
exit $((faults > 0))
