#!/usr/bin/env bash
# The class server under a class's load, at full length: 60 students for 30 s
# with a kill -9 half way, once with one connection per student and once with
# a new connection per request as the program makes. The test suite runs a
# shorter round of the first.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD:-build}
cmake --build "$build" -j2 --target server_load ostrovalden-server >/dev/null
"$build/tests/server/server_load" "$build/server/ostrovalden-server" "${SECONDS_:-30}" "${STUDENTS:-60}"
"$build/tests/server/server_load" "$build/server/ostrovalden-server" "${SECONDS_:-30}" "${STUDENTS:-60}" fresh
