#!/usr/bin/env bash
# Starts the class server on this machine: the database and a self-signed
# certificate for localhost live in SERVE_DIR (made on the first run). A
# school replaces cert.pem and key.pem there with its own (see the README).
set -euo pipefail
server=${1:?usage: serve.sh path/to/ostrovalden-server}
dir=${SERVE_DIR:-server-data}
port=${PORT:-8443}
mkdir -p "$dir"
if [ ! -f "$dir/cert.pem" ] || [ ! -f "$dir/key.pem" ]; then
    echo "serve: making a self-signed certificate for localhost in $dir"
    openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 825 \
        -keyout "$dir/key.pem" -out "$dir/cert.pem" -subj "/CN=localhost" \
        -addext "subjectAltName=DNS:localhost,IP:127.0.0.1" 2>/dev/null
    chmod 600 "$dir/key.pem"
fi
echo "serve: the teacher's page is https://localhost:$port/ (the browser warns once about the self-signed certificate)"
exec "$server" --cert "$dir/cert.pem" --key "$dir/key.pem" --db "$dir/ostrovalden.db" --port "$port" "${@:2}"
