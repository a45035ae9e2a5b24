#!/bin/sh
# make-architecture.sh [ARCHITECTURE.svg]: makes the picture of docs/architecture.md from
# architecture.dot, with graphviz.
set -eu
folder=$(dirname "$0")
dot -Tsvg "$folder/architecture.dot" -o "${1:-$folder/architecture.svg}"
