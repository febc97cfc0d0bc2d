#!/usr/bin/env bash
# Runs every benchmark executable of a build directory, then the scripted
# measurements (bench/*.sh), one after another.
set -euo pipefail
build=${1:-build-bench}
found=0
while IFS= read -r exe; do
    found=1
    echo "== $(basename "$exe")"
    "$exe" --benchmark_color=false
done < <(find "$build/bench" -type f -name 'bench_*' -perm -u+x 2>/dev/null | sort)
for script in bench/*.sh; do
    [ "$(basename "$script")" = run.sh ] && continue
    found=1
    echo "== $(basename "$script")"
    "$script" "$build"
done
[ $found -eq 1 ] || echo "no benchmarks built yet"
