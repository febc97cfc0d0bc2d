#!/usr/bin/env bash
# Installs what the build, the tests and the program need (with "fuzz": also
# what `make fuzz` needs; with "package": what `make package-test` checks
# with), but only what is missing, so that a second run
# costs a fraction of a second. Run as root, or as a user who may use sudo.
set -euo pipefail

packages=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev qt6-translations-l10n
    libcurl4-openssl-dev libdw-dev
    libcpp-httplib-dev libsodium-dev libsqlite3-dev openssl
    python3 python3-selenium chromium chromium-driver
    libgtest-dev libgmock-dev libbenchmark-dev
    locales
    xvfb xauth
    poppler-utils
    fonts-dejavu-core fonts-dejavu-extra fonts-noto-core fonts-liberation2 fonts-stix fonts-texgyre
)

# `make fuzz` alone needs clang and its sanitizer runtimes.
if [ "${1:-}" = fuzz ]; then
    packages+=(clang libclang-rt-14-dev)
fi
if [ "${1:-}" = package ]; then
    packages+=(file lintian desktop-file-utils appstream x11-utils imagemagick curl)
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null | grep -qx installed; then
        missing+=("$p")
    fi
done

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"
    elif command -v sudo >/dev/null; then sudo "$@"
    else echo "setup: root is needed to run: $*" >&2; exit 1
    fi
}

if [ ${#missing[@]} -gt 0 ]; then
    echo "setup: installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    as_root apt-get update -qq
    as_root apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The tests run under the Danish locale, where "," is the decimal mark.
if ! locale -a 2>/dev/null | grep -qix 'da_DK.utf8'; then
    echo "setup: generating da_DK.UTF-8"
    if [ -f /etc/locale.gen ] && ! grep -q '^da_DK.UTF-8 UTF-8' /etc/locale.gen; then
        as_root sed -i 's/^# *da_DK.UTF-8 UTF-8/da_DK.UTF-8 UTF-8/' /etc/locale.gen
        grep -q '^da_DK.UTF-8 UTF-8' /etc/locale.gen || echo 'da_DK.UTF-8 UTF-8' | as_root tee -a /etc/locale.gen >/dev/null
    fi
    as_root locale-gen da_DK.UTF-8 >/dev/null 2>&1 || as_root localedef -i da_DK -f UTF-8 da_DK.UTF-8
fi
