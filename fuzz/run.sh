#!/bin/sh
# Runs every fuzz target for some time: run.sh BIN SECONDS, the folder of the programs and the time of each. Corpora grow in
# build/corpus; what breaks a target is kept in build/findings and becomes a test.
set -eu
bin=$1
seconds=$2
here=$(cd "$(dirname "$0")/.." && pwd)
corpus=$here/build/corpus
findings=$here/build/findings
mkdir -p "$findings"

seed() { # target, files
    target=$1
    shift
    mkdir -p "$corpus/$target"
    for file in "$@"; do
        if [ -f "$file" ]; then
            cp -n "$file" "$corpus/$target/"
        fi
    done
}

golden=$here/tests/golden/files
seed figure "$golden"/*.fig
seed template "$golden"/*.template "$golden"/*.fig
seed snippet "$golden"/*.snippet
seed older "$golden"/*.old
seed page "$here"/examples/*/*.figure.toml
seed csv "$here"/examples/*/*.csv "$here"/examples/*/*.dat "$here"/examples/*/*.vec
seed parameters "$here"/examples/*/*.figure.toml
seed picture "$here"/docs/pictures/*.png
seed text

failed=0
for target in figure template snippet older page csv parameters picture text; do
    echo "$target: $seconds s"
    "$bin/fuzz-$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$findings/$target-" "$corpus/$target" > "$findings/$target.log" 2>&1 || failed=1
    grep -E "stat::number_of_executed_units|SUMMARY" "$findings/$target.log" || true
done
exit $failed
