#!/usr/bin/env bash
# Screenshots of the data page and the bug report dialog, in light and dark,
# for a person to look at: runs the program under Xvfb on a throw-away data
# folder and drives it with xdotool at the places a 1280×800 screen puts the
# buttons.
#   scripts/look_support.sh BUILD_DIR OUT_DIR
set -euo pipefail
build=${1:?build directory}
out=${2:?output directory}
mkdir -p "$out"

shoot() { # theme
    local theme=$1 home
    home=$(mktemp -d)
    mkdir -p "$home/data/Ostrovalden Skole"
    cat > "$home/data/Ostrovalden Skole/data.json" <<JSON
{"app":"Keldvarn","data":{"fs_theme":"\"$theme\"","fs_welcome_seen":"true","fs_telemetry":"true"},"saved":"2026-03-05T10:00:00.000Z","version":1}
JSON
    XDG_DATA_HOME="$home/data" HOME="$home" OSTROVALDEN_SERVICE_URL=https://127.0.0.1:9/api \
        xvfb-run -a -s '-screen 0 1280x800x24' bash -c "
        '$build/app/ostrovalden' & pid=\$!
        sleep 4
        # The search box, then the first hit.
        xdotool mousemove 140 84 click 1; sleep 0.3
        xdotool type --delay 30 'Gem og hent'; xdotool key Return; sleep 1.5
        import -window root '$out/data-$theme.png'
        # \"Om\" at the header's right end, then its report button.
        xdotool mousemove 1240 27 click 1; sleep 2.5
        xdotool mousemove 445 587 click 1; sleep 2
        xdotool type --delay 20 'Programmet frøs'; xdotool key Tab; sleep 0.2
        import -window root '$out/bug-$theme.png'
        # Too short: the dialog says so.
        xdotool mousemove 740 492 click 1; sleep 1
        import -window root '$out/bug-short-$theme.png'
        kill \$pid"
    rm -rf "$home"
}

shoot light
shoot dark
echo "screenshots in $out"
