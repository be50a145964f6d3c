#!/bin/sh
# Renders every example page: render.sh ZEMFIG OUT. Each as a PDF of several stages, and one stage as PNG and SVG.
set -eu
zemfig=$1
out=$2
here=$(dirname "$0")
mkdir -p "$out"

render() { # page, stages of the PDF, stage of the pictures, further options
    page=$here/$1 stages=$2 stage=$3
    name=$(basename "$1" .figure.toml)
    shift 3
    "$zemfig" check "$page"
    "$zemfig" render "$page" --stage "$stages" -o "$out/$name.pdf" "$@"
    "$zemfig" render "$page" --stage "$stage" -o "$out/$name.png" --dpi 150 "$@"
    "$zemfig" render "$page" --stage "$stage" -o "$out/$name.svg" "$@"
}

render tensile/tensile.figure.toml 11,51,101,201,288,341,349 288
render fatigue/fatigue.figure.toml all 1
render openhole/openhole.figure.toml 1,6,11 11 --place border
"$zemfig" render "$here/openhole/openhole.figure.toml" --place element -o "$out/openhole-element.png" --dpi 150
echo "the pages are in $out/"
