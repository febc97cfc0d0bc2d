#!/usr/bin/env bash
# Screenshots of the circuit page with a solved circuit (the drawing and its
# table, the sheet's top, middle and end) on "kreds", "kredsac" and
# "kredsguideac", in light and dark, in a 1280×800 window under Xvfb, for a
# person to look at.
#   scripts/look_circuit.sh [OUTDIR] [SCENE...]     (default: build/circuit)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD:-build}
out=${1:-$build/circuit}
shift || true
[ -f "$build/CMakeCache.txt" ] || cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"${JOBS:-2}" --target circuit_shots >/dev/null
rm -rf "$out"
LC_ALL=da_DK.UTF-8 xvfb-run -a -s '-screen 0 1280x800x24' "$build/scripts/gallery/circuit_shots" "$out" "$@" 2>&1 |
    grep -v 'propagateSizeHints\|XDG_RUNTIME_DIR' || true
echo "Look at $out/*.png."
