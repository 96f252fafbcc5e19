#!/usr/bin/env bash
# tests/svg/compare.sh : draws the shipped images with our renderer and with librsvg, and compares the pixels.
#
# Shapes only: texts depend on fonts. A pixel may differ by the way its edge is smoothed, so it is the mean over an image
# that is bound: 2 of 255 for each, 0.7 for all together. Needs clang, librsvg2-bin and imagemagick.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/help.sh"
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
out=${KXDEVUI_BUILD_ROOT:-$root/build}/svg
rm -rf "$out"; mkdir -p "$out"
clang++ -std=c++20 -O2 -DKXBASEUI_STATIC -I"$root/modules" "$root/tests/svg/render.cpp" \
  "$root"/modules/kxbaseui/kx_{path,raster,svg,svgsheet,svgstyle,svgvalues,xml}.cpp -o "$out/render"

for image in "$root"/modules/baseresources/images/*.svg; do
  name=$(basename "$image" .svg)
  # Neither a text nor the colour of the scheme.
  sed -E 's|<text.*</text>||; s|currentColor|#000000|g' "$image" >"$out/$name.svg"
  for size in 16 24 32 64; do
    "$out/render" "$out/$name.svg" $size "$out/ours.ppm"
    rsvg-convert -w $size -h $size -b white "$out/$name.svg" -o "$out/theirs.png"
    difference=$(compare -metric MAE "$out/ours.ppm" "$out/theirs.png" null: 2>&1 || true)
    echo "$difference $name $size"
  done
done | awk '
  { gsub(/[()]/, "", $2); mean = $2 * 255; sum += mean
    if (mean > worst) { worst = mean; name = $3 " at " $4 }
    if ($2 !~ /^[0-9.e-]+$/ || mean > 2) { print $3 " at " $4 ": " mean " of 255"; failed = 1 } }
  END {
    if (NR == 0) { print "nothing was compared"; exit 1 }
    printf "%d pictures differ by %.2f of 255 in the mean, most by %.2f (%s)\n", NR, sum / NR, worst, name
    exit failed || sum / NR > 0.7 }'
