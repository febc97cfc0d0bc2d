#!/usr/bin/env bash
# Start-up time: from process start to the first painted main window, under
# Xvfb at 1280×800, each run with a fresh data directory. Prints every run and
# the medians in milliseconds: wall time, and the process's own CPU time, which
# a busy machine disturbs far less.
#   bench/startup.sh <build dir> [runs]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${2:-${RUNS:-9}}
exe="$build/app/ostrovalden"
[ -x "$exe" ] || { echo "startup: $exe is missing" >&2; exit 1; }

if [ -z "${DISPLAY:-}" ] || [ "${QT_QPA_PLATFORM:-xcb}" != xcb ]; then
    command -v xvfb-run >/dev/null || { echo "startup: xvfb-run is missing (package xvfb)" >&2; exit 1; }
    unset QT_QPA_PLATFORM
    exec xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$build" "$runs"
fi
export QT_QPA_PLATFORM=xcb OSTROVALDEN_FIRST_PAINT=1

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# "wall cpu" in milliseconds from launch to the marker line; the program is
# stopped after it.
one_run() {
    local home="$scratch/run$1" fifo="$scratch/fifo$1" start now="" pid line
    mkdir -p "$home"
    mkfifo "$fifo"
    start=$(date +%s%N)
    XDG_DATA_HOME="$home" HOME="$home" "$exe" 2>"$fifo" >/dev/null &
    pid=$!
    while IFS= read -r line; do
        if [[ $line == "ostrovalden: first paint" ]]; then
            now=$(date +%s%N)
            # utime and stime, fields 14 and 15, in clock ticks
            local ticks hz
            ticks=$(awk '{print $14 + $15}' "/proc/$pid/stat" 2>/dev/null || echo 0)
            hz=$(getconf CLK_TCK)
            echo "$(((now - start) / 1000000)) $((ticks * 1000 / hz))"
            break
        fi
    done <"$fifo"
    [ -n "${now:-}" ] || echo "startup: the program ended without painting" >&2
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}

one_run warm >/dev/null   # fills the font cache and the disk cache
walls=()
cpus=()
for i in $(seq 1 "$runs"); do
    t=$(one_run "$i")
    [ -n "$t" ] || exit 1
    walls+=("${t% *}")
    cpus+=("${t#* }")
done
median() { printf '%s\n' "$@" | sort -n | sed -n "$((($# + 1) / 2))p"; }
echo "start-up to first paint, wall (ms): ${walls[*]}"
echo "start-up to first paint, cpu  (ms): ${cpus[*]}"
echo "median over $runs runs: $(median "${walls[@]}") ms wall, $(median "${cpus[@]}") ms cpu"
