#!/usr/bin/env bash
# Renders every figure (schematics, phasors, triangles, each formula figure as
# a solve leaves it and with nothing known) to PNG in light and dark, and
# worked sheets with their figures at text size 1.0 and 1.3, with contact
# sheets of nine pictures each, for a person to look at.
#   scripts/look_figures.sh [OUTDIR]     (default: build/gallery)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD:-build}
out=${1:-$build/gallery}
[ -f "$build/CMakeCache.txt" ] || cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"${JOBS:-2}" --target figure_gallery >/dev/null
rm -rf "$out"
LC_ALL=da_DK.UTF-8 QT_QPA_PLATFORM=offscreen "$build/scripts/gallery/figure_gallery" "$out" 2>&1 |
    grep -v 'propagateSizeHints\|XDG_RUNTIME_DIR' || true
echo "Look at $out/contact_light_*.png, $out/contact_dark_*.png and $out/sheets_*.png;"
echo "single pictures are in $out/figures and $out/sheets."
