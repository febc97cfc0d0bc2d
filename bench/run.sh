#!/usr/bin/env bash
# Runs every benchmark executable of a build directory, one after another.
set -euo pipefail
build=${1:-build-bench}
shopt -s nullglob
found=0
for exe in "$build"/bench/bench_*; do
    [ -x "$exe" ] && [ -f "$exe" ] || continue
    found=1
    echo "== $(basename "$exe")"
    "$exe" --benchmark_min_time=0.2
done
for script in bench/*.sh; do
    [ "$(basename "$script")" = run.sh ] && continue
    found=1
    echo "== $(basename "$script")"
    "$script" "$build"
done
[ $found -eq 1 ] || echo "no benchmarks built yet"
