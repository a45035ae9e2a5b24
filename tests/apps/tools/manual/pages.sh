# The pages are valid, every command has one, and each describes every option that --help lists.
. "$(dirname "$0")/expect.sh"
need mandoc man

# options TEXT: the names at the beginning of each option's line in --help, and those behind "also",
# on several lines if all but the last end in a comma.
options() {
  sed -E ':a; /^ +also .*,$/{N; s/,\n +/, /; ta}' <<<"$1" | grep -oE '^ +(-[^ ]+|also .*)' |
    sed 's/^ *also//' | tr -d ' ' | tr ',' '\n' | sort -u
}

# page NAME: the page without font changes.
page() { zcat "$manual/man1/$1.1.gz" | sed 's/\\f[BIR]//g; s/\\-/-/g'; }

# describes PAGE OPTION: the page has a paragraph about the option.
describes() { grep -qE -- "(^|, )$2(,| |\$)" <<<"$1"; }

# section PAGE TITLE: the lines of a section.
section() { sed -n "/^\.SH $2\$/,/^\.SH /{/^\.SH/!p}" <<<"$1"; }

# required LINE: a synopsis without the optional parts in brackets.
required() { sed -E 's/^Usage: //; s/ \[[A-Za-z]+\](\.\.\.)?//g' <<<"$1"; }

check() {  # PAGE HELP
  local text option
  mandoc -T lint -W error "$manual/man1/$1.1.gz" || faults=$((faults + 1))
  expect "man --warnings $1" "" "$(man --warnings -E UTF-8 -l "$manual/man1/$1.1.gz" 2>&1 >/dev/null)"
  text=$(page "$1")
  for option in $(options "$2"); do
    describes "$text" "$option" || expect "$1" "$option" "nothing"
  done
  expect "$1, synopsis" "$(required "$(grep '^Usage: ' <<<"$2")")" \
    "$(required "$(section "$text" SYNOPSIS)")"
  expect "$1, examples" "$(grep '^  vistrel ' <<<"$2" | sed 's/^ *//')" \
    "$(section "$text" EXAMPLES | grep -v '^\.')"
  [ "$(section "$text" DESCRIPTION | grep -vc '^\.')" -gt 2 ] || expect "$1" "a description" "nothing"
  grep -q '^0 ' <<<"$(section "$text" 'EXIT STATUS')" || expect "$1" "an exit status" "nothing"
  if describes "$text" --no-such-option; then expect "$1" "nothing" --no-such-option; fi
}

commands=$("$vistrel" --help | sed '1,/ommands:$/d; /^$/q' | grep -oE '^  [a-z0-9]+ ' | tr -d ' ')
[ "$(wc -w <<<"$commands")" -ge 5 ]
grep -qxF -- --mask <<<"$(options "$("$vistrel" convert --help)")" || expect options --mask nothing
check vistrel "$("$vistrel" --help)"
for command in $commands; do
  check "vistrel-$command" "$("$vistrel" "$command" --help)"
  grep -qF "vistrel-$command(1)" <<<"$(page vistrel)" || expect vistrel "vistrel-$command" "nothing"
done

# The page of develop describes every part of a look.
parts=$({ "$vistrel" develop a --look nonsense=1 2>&1 || true; } | sed -n 's/.*the names are //p' | tr -d ,)
[ "$(wc -w <<<"$parts")" -ge 5 ]
for part in $parts; do
  grep -qE "\b$part=" <<<"$(section "$(page vistrel-develop)" DESCRIPTION)" ||
    expect "parts of a look" "$part" nothing
done
# So do those that turn pictures: every orientation, and its codes.
orientations=$({ "$vistrel" convert a --orient nonsense -o b.png 2>&1 || true; } |
  sed -n 's/.*nonsense: \(.*\) are allowed.*/\1/p' | tr -d ,)
expect "orientations" 8 "$(wc -w <<<"$orientations")"
for name in $orientations "1 to 8"; do
  for command in convert develop; do
    grep -qE "\b$name\b" <<<"$(page "vistrel-$command" | grep -A3 -- --orient)" ||
      expect "orientations of $command" "$name" nothing
  done
done
expect "pages" "$(wc -w <<<"$commands vistrel")" "$(find "$manual/man1" -name '*.1.gz' | wc -l)"
exit $((faults > 0))
