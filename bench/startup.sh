#!/usr/bin/env bash
# Start-up time: from process start to the first painted main window, under
# Xvfb at 1280×800, each run with a fresh data directory. Prints every run and
# the median in milliseconds.
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

# Milliseconds from launch to the marker line; the program is stopped after it.
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
            echo $(((now - start) / 1000000))
            break
        fi
    done <"$fifo"
    [ -n "${now:-}" ] || echo "startup: the program ended without painting" >&2
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}

one_run warm >/dev/null   # fills the font cache and the disk cache
times=()
for i in $(seq 1 "$runs"); do
    t=$(one_run "$i")
    [ -n "$t" ] || exit 1
    times+=("$t")
done
echo "start-up to first paint (ms): ${times[*]}"
sorted=($(printf '%s\n' "${times[@]}" | sort -n))
echo "median: ${sorted[$((runs / 2))]} ms over $runs runs"
