#!/usr/bin/env bash
# Screenshots of the formula road as a new student meets it (finder cards and
# tiles, a formula page while typing, solved, refused and step by step, the
# home page and its chips, the sidebar after an entry near its end, the
# settings panel after a new text size, the PDF save dialog, the PDF's first
# page, a message box), each in light and dark at text size 1.0 and 1.3, in a
# 1280×800 window under Xvfb, for a person to look at.
#   scripts/look_pages.sh [OUTDIR] [SCENE...]     (default: build/pages)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD:-build}
out=${1:-$build/pages}
shift || true
[ -f "$build/CMakeCache.txt" ] || cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"${JOBS:-2}" --target page_shots >/dev/null
rm -rf "$out"
LC_ALL=da_DK.UTF-8 xvfb-run -a -s '-screen 0 1280x800x24' "$build/scripts/gallery/page_shots" "$out" "$@" 2>&1 |
    grep -v 'propagateSizeHints\|XDG_RUNTIME_DIR' || true
# The PDFs' first pages as pictures too (poppler-utils).
for pdf in "$out"/*.pdf; do
    [ -e "$pdf" ] || continue
    pdftoppm -png -r 72 -f 1 -l 1 -singlefile "$pdf" "${pdf%.pdf}_page1"
    pdfinfo "$pdf" | sed -n 's/^Title: */'"$(basename "$pdf")"'\tPDF title: /p' >>"$out/titles.txt"
done
echo "Look at $out/*.png; the window title of each is in $out/titles.txt."
