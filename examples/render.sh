#!/bin/sh
# Renders every example page: render.sh ZEMFIG OUT. Each as a PDF of several stages, and one stage as PNG and SVG.
set -eu
zemfig=$1
out=$2
here=$(dirname "$0")
mkdir -p "$out"

render() { # page, stages of the PDF, stage of the pictures
    name=$(basename "$1" .figure.toml)
    "$zemfig" check "$here/$1"
    "$zemfig" render "$here/$1" --stage "$2" -o "$out/$name.pdf"
    "$zemfig" render "$here/$1" --stage "$3" -o "$out/$name.png" --dpi 150
    "$zemfig" render "$here/$1" --stage "$3" -o "$out/$name.svg"
}

render tensile/tensile.figure.toml 11,51,101,201,288,341,349 288
render fatigue/fatigue.figure.toml all 1
echo "the pages are in $out/"
