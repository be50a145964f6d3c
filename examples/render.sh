#!/bin/sh
# Renders every example page: render.sh BIN OUT, the folders of the programs and of the pages. Each as a PDF, of several stages where it has them, and one stage as
# PNG and SVG.
set -eu
bin=$1
zemfig=$bin/zemfig
out=$2
here=$(dirname "$0")
mkdir -p "$out"

render() { # page, stages of the PDF, stage of the pictures (none for a page without stages), further options
    page=$here/$1 stages=$2 stage=$3
    name=$(basename "$1" .figure.toml)
    shift 3
    "$zemfig" render "$page" ${stages:+--stage "$stages"} -o "$out/$name.pdf" "$@"
    "$zemfig" render "$page" ${stage:+--stage "$stage"} -o "$out/$name.png" --dpi 150 "$@"
    "$zemfig" render "$page" ${stage:+--stage "$stage"} -o "$out/$name.svg" "$@"
}

# A million rows: the record again and again, with the time running on.
write_samples() { # target
    awk -F '\t' -v rows=1000000 -v interval=0.000977 '
        NR > 23 { samples[n++] = $2 "," $3 "," $4 }
        END {
            print "time [s],force,response_1 [m/s^2],response_2 [m/s^2]"
            for (i = 0; i < rows; i++)
                printf "%.6f,%s\n", i * interval, samples[i % n]
        }' "$here/vibration/long_single_header_multi_ch.lvm" > "$1"
}

for page in "$here"/tensile/*.figure.toml "$here"/fatigue/*.figure.toml "$here"/openhole/*.figure.toml \
    "$here"/streamflow/*.figure.toml "$here"/styles/*.figure.toml "$here"/soapfilm/*.figure.toml; do
    "$zemfig" check "$page"
done

render tensile/tensile.figure.toml 11,51,101,201,288,341,349 288
render tensile/stress-strain.figure.toml 17,101,288,349 201
render fatigue/fatigue.figure.toml all 1
render openhole/openhole.figure.toml 1,6,11 11 --place border
"$zemfig" render "$here/openhole/openhole.figure.toml" --place element -o "$out/openhole-element.png" --dpi 150
render streamflow/streamflow.figure.toml "" ""
render styles/styles.figure.toml "" ""

write_samples "$out/vibration.csv"
rm -f "$out/vibration.zem"
"$zemfig" import "$out/vibration.csv" --series --project "$out/vibration.zem"
"$zemfig" check "$here/vibration/vibration.figure.toml" --project "$out/vibration.zem"
render vibration/vibration.figure.toml "" "" --project "$out/vibration.zem"

# A page that nobody laid out, and the same picture from the page that was saved of it.
cp "$here/airquality/airquality.csv" "$out/"
"$zemfig" plot "$out/airquality.csv" --y CO,benzene,NOx,temperature --missing=-200 --title "Air quality, spring 2004" \
    -o "$out/airquality.png" --save "$out/airquality.figure.toml"
"$zemfig" render "$out/airquality.figure.toml" -o "$out/airquality-again.png"
cmp "$out/airquality.png" "$out/airquality-again.png"
"$zemfig" render "$out/airquality.figure.toml" -o "$out/airquality.pdf"
"$zemfig" render "$out/airquality.figure.toml" -o "$out/airquality.svg"
# Pictures: a field on a blank one, and a page whose pictures are made here.
render soapfilm/soapfilm.figure.toml all 2
mkdir -p "$out/speckle"
"$bin/speckle" "$out/speckle"
cp "$here/speckle/speckle.figure.toml" "$out/speckle/"
"$zemfig" check "$out/speckle/speckle.figure.toml"
for ending in pdf png svg; do
    "$zemfig" render "$out/speckle/speckle.figure.toml" --stage 3 -o "$out/speckle.$ending"
done

# A page that nobody laid out, of a picture and its field.
"$zemfig" overlay "$out/speckle/speckle_3.tif" --points "$out/speckle/field_3.csv" --moved --title "Stretched plate" \
    -o "$out/overlay.png" --save "$out/speckle/overlay.figure.toml"
"$zemfig" render "$out/speckle/overlay.figure.toml" -o "$out/overlay-again.png"
cmp "$out/overlay.png" "$out/overlay-again.png"
"$zemfig" render "$out/speckle/overlay.figure.toml" -o "$out/overlay.pdf"
"$zemfig" render "$out/speckle/overlay.figure.toml" -o "$out/overlay.svg"
echo "the pages are in $out/"
