#!/usr/bin/env bash
# Installs both Debian packages on this machine as a school's IT would, tries
# them, and removes them again:
#   - lintian, desktop-file-validate and appstreamcli on what the packages hold;
#   - dpkg -i of both;
#   - the program, started by its menu entry's command under Xvfb, shows its
#     window (a screenshot of it is left beside the packages, the picture that
#     the software-centre description points to);
#   - the server, started by the service unit's own command line with the
#     installed configuration, as the unit's user, answers /api/version over
#     TLS with the certificate that the installation made;
#   - dpkg -r of both leaves the student's data and the server's database.
# It changes the whole machine, so it runs from `make package-test` and CI
# only, never inside the test suite, and holds the machine's package lock.
#   scripts/package-test.sh DIR    (DIR holds ostrovalden-{skole,server}_*.deb)
set -euo pipefail

dir=$(cd "${1:?usage: package-test.sh DIR}" && pwd)
appid=dk.ostrovalden.skole
unit=/lib/systemd/system/ostrovalden-server.service
conf=/etc/ostrovalden/server.conf
statedir=/var/lib/ostrovalden

say() { echo "package-test: $*"; }
fail() {
    echo "package-test: FAILED: $*" >&2
    exit 1
}
skip() {
    # In CI a skipped check would read as a passed one.
    [ "${CI:-}" = true ] && fail "$*"
    say "skipped: $*"
    exit 0
}

[ "$(id -u)" -eq 0 ] || skip "installing packages needs root"
command -v dpkg >/dev/null || skip "dpkg is missing: not a Debian machine"
for tool in lintian desktop-file-validate appstreamcli xvfb-run xwininfo import curl setpriv; do
    command -v "$tool" >/dev/null || fail "$tool is missing (scripts/setup.sh package installs it)"
done

shopt -s nullglob
skole=("$dir"/ostrovalden-skole_*.deb)
server=("$dir"/ostrovalden-server_*.deb)
[ ${#skole[@]} -eq 1 ] && [ ${#server[@]} -eq 1 ] || fail "expected one package of each in $dir (make package)"
skole=${skole[0]}
server=${server[0]}

tmp=$(mktemp -d)
pids=()
userBefore=$(getent passwd ostrovalden || true)
installed=false
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    if $installed; then
        dpkg --purge ostrovalden-skole ostrovalden-server >/dev/null 2>&1 || true
        # Ours to remove: the test refused to start where any of it existed.
        rm -rf "$statedir" /etc/ostrovalden
        [ -n "$userBefore" ] || userdel ostrovalden 2>/dev/null || true
    fi
    rm -rf "$tmp"
}
trap cleanup EXIT

started=$(date +%s)
say "$(basename "$skole"): $(du -k "$skole" | cut -f1) KB, $(basename "$server"): $(du -k "$server" | cut -f1) KB"

say "lintian"
lintianOk=true
lintian --fail-on error "$skole" "$server" >"$tmp/lintian.log" 2>&1 || lintianOk=false
grep -v '^running with root privileges' "$tmp/lintian.log" || true
$lintianOk || fail "lintian reports errors"

dpkg-deb -x "$skole" "$tmp/skole"
say "desktop-file-validate, appstreamcli validate"
desktop-file-validate "$tmp/skole/usr/share/applications/$appid.desktop" || fail "the menu entry is not valid"
appstreamcli validate --no-net "$tmp/skole/usr/share/metainfo/$appid.metainfo.xml" || fail "the metainfo is not valid"
for word in elektriker formler kredsløb; do
    grep -q "^Keywords=.*\b$word;" "$tmp/skole/usr/share/applications/$appid.desktop" ||
        fail "the menu entry's keywords lack \"$word\""
done

# Everything below changes the machine: one at a time with anyone else
# installing packages on it.
lock=${PACKAGE_LOCK:-/work/apt.lock}
[ -d "$(dirname "$lock")" ] || lock=/run/lock/ostrovalden-package-test.lock
exec 9>"$lock"
say "waiting for $lock"
flock 9

for pkg in ostrovalden-skole ostrovalden-server; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$pkg" 2>/dev/null || true)
    [ -z "$status" ] || [ "$status" = not-installed ] ||
        fail "$pkg is on this machine ($status); the test would remove it"
done
[ ! -e "$statedir" ] && [ ! -e /etc/ostrovalden ] ||
    fail "$statedir or /etc/ostrovalden exists: an earlier installation's data, which the test would remove"

say "dpkg -i"
installed=true
dpkg -i "$skole" "$server" >"$tmp/dpkg.log" 2>&1 || {
    cat "$tmp/dpkg.log"
    fail "dpkg -i"
}
[ -x /usr/bin/ostrovalden ] && [ -x /usr/bin/ostrovalden-server ] || fail "the programs are not installed"
for size in 16x16 48x48 256x256 scalable; do
    ls /usr/share/icons/hicolor/$size/apps/$appid.* >/dev/null 2>&1 || fail "no $size icon"
done
if command -v systemd-analyze >/dev/null; then
    systemd-analyze verify --man=no "$unit" || fail "systemd finds fault with $unit"
fi
getent passwd ostrovalden >/dev/null || fail "the server's user was not made"
[ "$(stat -c '%U:%G %a' /etc/ostrovalden/key.pem)" = "root:ostrovalden 640" ] ||
    fail "the key is not readable by the service alone: $(stat -c '%U:%G %a' /etc/ostrovalden/key.pem)"

# The program, from the menu entry's command, for a student whose data is
# already there (and who has seen the welcome, so that the window is bare).
say "the program under Xvfb"
export HOME=$tmp/home XDG_RUNTIME_DIR=$tmp/run
unset XDG_DATA_HOME XDG_CONFIG_HOME QT_QPA_PLATFORM
mkdir -p "$HOME/.local/share/Ostrovalden Skole" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
data="$HOME/.local/share/Ostrovalden Skole/data.json"
# The store's file form: each value as JSON text under a prefixed key.
printf '{"app": "Keldvarn", "data": {"fs_welcome_seen": "true"}}\n' >"$data"
exec=$(sed -n 's/^Exec=//p' /usr/share/applications/$appid.desktop)
wmclass=$(sed -n 's/^StartupWMClass=//p' /usr/share/applications/$appid.desktop)
[ "$(command -v "$exec")" = /usr/bin/ostrovalden ] || fail "the menu entry runs \"$exec\", not the installed program"
cat >"$tmp/look.sh" <<EOF
#!/usr/bin/env bash
# Inside Xvfb: start the program, wait until its window is on the screen.
"$exec" >"$tmp/program.log" 2>&1 &
pid=\$!
for _ in \$(seq 120); do
    kill -0 \$pid 2>/dev/null || { echo "the program ended"; exit 1; }
    id=\$(xwininfo -root -tree | grep -m1 'Ostrovalden Skole": ("$wmclass" ' | awk '{print \$1}')
    if [ -n "\$id" ] && xwininfo -id "\$id" | grep -q 'Map State: IsViewable'; then
        sleep 2
        import -window root "$dir/screenshot-hjem.png"
        xwininfo -id "\$id" | grep -E 'Width|Height'
        kill \$pid
        wait \$pid || true
        exit 0
    fi
    sleep 0.5
done
echo "no window within 60 s"
kill \$pid
exit 1
EOF
LC_ALL=da_DK.UTF-8 xvfb-run -a -s '-screen 0 1280x800x24' bash "$tmp/look.sh" || {
    cat "$tmp/program.log"
    fail "the installed program showed no window"
}
say "window shown; screenshot in $dir/screenshot-hjem.png"
grep -q '"fs_welcome_seen"' "$data" || fail "the student's data file lost its entries in a run"
dataSum=$(sha256sum "$data")

# The server, by the unit's command line with the configuration's values, as
# the unit's user; only the port is free, so as not to meet another server here.
say "the server over TLS"
set -a
# shellcheck disable=SC1090
. "$conf"
set +a
user=$(sed -n 's/^User=//p' "$unit")
args=()
for word in $(sed -n 's/^ExecStart=//p' "$unit"); do
    if [[ $word =~ ^\$\{([A-Z_]+)\}$ ]]; then
        args+=("${!BASH_REMATCH[1]}")
    elif [[ $word =~ ^\$([A-Z_]+)$ ]]; then
        read -ra split <<<"${!BASH_REMATCH[1]}"
        args+=("${split[@]}")
    else
        args+=("$word")
    fi
done
for i in "${!args[@]}"; do [ "${args[$i]}" = --port ] && args[i + 1]=0; done
setpriv --reuid="$user" --regid="$user" --init-groups "${args[@]}" >"$tmp/server.log" 2>&1 &
pids+=($!)
port=
for _ in $(seq 100); do
    port=$(sed -n 's|.*lytter på https://[^:]*:\([0-9]*\)/.*|\1|p' "$tmp/server.log")
    [ -n "$port" ] && break
    kill -0 "${pids[-1]}" 2>/dev/null || break
    sleep 0.1
done
[ -n "$port" ] || {
    cat "$tmp/server.log"
    fail "the installed server did not start"
}
[ "$(ps -o user= -p "${pids[-1]}")" = "$user" ] || fail "the server does not run as $user"
reply=$(curl --silent --show-error --max-time 10 --cacert "$CERT" -X POST -H 'Content-Type: application/json' \
    -d '{}' "https://localhost:$port/api/version") || fail "no answer over TLS from /api/version"
[[ $reply == *'"version"'* ]] || fail "/api/version answered: $reply"
say "/api/version on port $port: $reply"
kill "${pids[-1]}"
wait "${pids[-1]}" || true
[ "$(stat -c %U "$statedir/ostrovalden.db" 2>/dev/null)" = "$user" ] || fail "no database of $user's in $statedir"

say "dpkg -r"
dpkg -r ostrovalden-skole ostrovalden-server >"$tmp/dpkg.log" 2>&1 || {
    cat "$tmp/dpkg.log"
    fail "dpkg -r"
}
[ ! -e /usr/bin/ostrovalden ] && [ ! -e /usr/bin/ostrovalden-server ] && [ ! -e "$unit" ] ||
    fail "files remain after dpkg -r"
[ -f "$statedir/ostrovalden.db" ] || fail "dpkg -r took the server's database"
[ "$(sha256sum "$data")" = "$dataSum" ] || fail "dpkg -r touched the student's data"
[ -f "$conf" ] || fail "dpkg -r took the configuration (a purge's work)"

say "dpkg --purge"
dpkg --purge ostrovalden-skole ostrovalden-server >"$tmp/dpkg.log" 2>&1 || {
    cat "$tmp/dpkg.log"
    fail "dpkg --purge"
}
[ ! -e /etc/ostrovalden ] || fail "the purge left /etc/ostrovalden: $(ls -A /etc/ostrovalden)"
[ -f "$statedir/ostrovalden.db" ] || fail "the purge took the server's database"

say "all passed in $(($(date +%s) - started)) s"
