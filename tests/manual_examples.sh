#!/usr/bin/env bash
# Runs the examples of the manual page PAGE, each in a folder of its own that has the files they
# name, with the program CLI and the samples in DATA.
set -euo pipefail
page=$1 cli=$2 data=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
PATH=$(dirname "$cli"):$PATH

mkdir -p "$work/samples/looks"
cd "$work/samples"
cp "$data/sample.3dl" look.3dl
cp "$data/sample.cube" look.cube
cp "$data/sample.cube" looks/dusk.cube
cp "$data/sample.spi1d" camera.spi1d
cp "$data/texture.png" frame.png
cp look.3dl new.3dl
mkdir frames
cp frame.png frames/1.png
gzip -k look.cube
tintwell-cli identity looks/night.cube
tintwell-cli identity display.cube
tintwell-cli convert look.3dl approved.cube

# The lines between .EX and .EE, without the page's escapes; a line of its own ends each example.
sed -n '/^\.SH EXAMPLES/,$p' "$page" | sed -n -e '/^\.EX/,/^\.EE/p' |
    sed -e '/^\.EX/d' -e 's/^\.EE.*/#/' -e 's/\\-/-/g' -e 's/\\e/\\/g' >"$work/examples"
count=0 example=
while IFS= read -r line; do
    if [ "$line" != '#' ]; then
        example+=$line$'\n'
        continue
    fi
    count=$((count + 1))
    cp -r "$work/samples" "$work/$count"
    if ! (cd "$work/$count" && bash -euo pipefail -c "$example"); then
        echo "this example of the manual page fails:"$'\n'"$example" >&2
        exit 1
    fi
    example=
done <"$work/examples"
[ "$count" -ge 10 ]
