# lintian.sh PACKAGES: no errors.
set -euo pipefail
command -v lintian >/dev/null || { echo "skipped: lintian is not installed"; exit 77; }
cd "$1"
options=()
[ "$(id -u)" != 0 ] || options=(--allow-root)
lintian "${options[@]}" --fail-on error --tag-display-limit 0 -- *.deb
