#!/usr/bin/env bash
# Shows the program without hardware: a simulated strip, drawn in the terminal, follows the screen; with --music
# a beat on a sound server of the demo's own; with --matrix it is an LED matrix, drawn in a window as well, that
# plays pictures. With --wayland the screen is one that a Wayland desktop hands out, whose part is played by
# wayland-stage: its portal asks, here, or answers by itself. With --online a server of the online service, on this machine, answers the program. Probe, capture,
# colour pipeline, serial line and online clients are the program's own. Nothing of the user's is touched.
# Usage: scripts/demo.sh BIN_FOLDER [--seconds N] [--plain] [--virtual] [--music | --matrix | --wayland[=ANSWER]]
#        [--online] [-- program's arguments]
# ANSWER is ask, yes, no, or restored by an earlier consent; ask with a terminal, else yes, where it is left out.
# Without a terminal it prints a line a second; without a display as well it ends after 10 seconds. With a limit
# it fails unless the light moved and, with --online, the service was asked for version and picture.
set -u
bin=$(cd "$1" && pwd) || exit 2
shift

seconds=""
plain=""
virtual=""
music=""
matrix=""
wayland=""
online=""
while [ $# -gt 0 ]; do
    case $1 in
    --seconds) seconds=$2; shift ;;
    --plain) plain=yes ;;
    --virtual) virtual=yes ;;
    --music) music=yes; matrix=""; wayland="" ;;
    --matrix) matrix=yes; music=""; wayland="" ;;
    --wayland | --wayland=*) wayland=${1#--wayland}; wayland=${wayland#=}; wayland=${wayland:-auto}; music=""; matrix="" ;;
    --online) online=yes ;;
    --) shift; break ;;
    *) break ;;
    esac
    shift
done
name="Demo strip"
model=LV0127
leds=120
effect=id.effect.screenSync.fullScreen
[ -z "$music" ] || effect=id.effect.dynamicMusic.peakValues_7
[ -z "$matrix" ] || { effect=id.effect.graphics.graphics; model=LV0N03; leds=253; name="Demo matrix"; }
[ -n "$plain" ] && virtual=yes # what a user's own screen shows need not move
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || virtual=yes
if [ ! -t 1 ]; then
    plain=yes
    if [ -z "$virtual" ]; then
        [ -n "$music$matrix$wayland" ] || effect=id.effect.colorful.ColorMap_3 # moves by itself
    else
        seconds=${seconds:-10}
    fi
fi

if [ "$wayland" = auto ]; then
    wayland=yes
    [ ! -t 0 ] || wayland=ask
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/lumivar-demo.XXXXXX") || exit 1
helpers=()
simulator=""
service=""
status=1
export LUMIVAR_LOG_TO_CONSOLE=1 # for the program's last words

cleanup() {
    trap '' INT TERM HUP
    if [ -n "$simulator" ] && kill -0 "$simulator" 2>/dev/null; then
        kill "$simulator" # it ends the program and tells how the strip was left
        wait "$simulator"
        status=$?
    fi
    end_service
    [ ${#helpers[@]} -gt 0 ] && kill "${helpers[@]}" 2>/dev/null
    wait
    rm -rf "$work"
    exit "$status"
}
trap cleanup EXIT
trap 'exit' INT TERM HUP

# With a terminal that is drawn on its lines come only now.
end_service() {
    [ -n "$service" ] || return 0
    kill "$service" 2>/dev/null
    wait "$service"
    local result=$?
    service=""
    [ "$status" -ne 0 ] || status=$result
    [ -n "$plain" ] || cat "$work/service.log"
}

fail() {
    echo "demo.sh: $1" >&2
    exit 1
}

start_virtual_screen() {
    # A session of their own keeps a Ctrl-C in the terminal from them, so that the screen outlives the program.
    setsid Xvfb -displayfd 3 -screen 0 1280x720x24 -noreset -nolisten tcp 3>"$work/display" \
        >"$work/xvfb.log" 2>&1 </dev/null &
    helpers+=($!)
    local tries
    for ((tries = 0; tries < 100; ++tries)); do
        [ -s "$work/display" ] && break
        kill -0 "${helpers[0]}" 2>/dev/null || break
        sleep 0.1
    done
    [ -s "$work/display" ] || { cat "$work/xvfb.log" >&2; fail "no virtual screen"; }
    DISPLAY=":$(<"$work/display")"
    export DISPLAY
    unset WAYLAND_DISPLAY XDG_SESSION_TYPE
    export QT_QPA_PLATFORM=xcb
    # The virtual screen has no part in the user's desktop session.
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$work/run/no-bus"
    setsid "$bin/moving-picture" >"$work/picture.log" 2>&1 </dev/null &
    helpers+=($!)
}

# Plays and hears without a loudspeaker, whatever the user's own sound is.
start_beat() {
    mkdir -m 700 "$work/sound"
    export PULSE_SERVER="unix:$work/sound/native"
    # Rewinds would hold back the first two seconds.
    HOME="$work/sound" XDG_CONFIG_HOME="$work/sound" XDG_RUNTIME_DIR="$work/sound" \
        PULSE_RUNTIME_PATH="$work/sound" setsid pulseaudio -n --daemonize=no --exit-idle-time=-1 \
        --use-pid-file=no --disable-shm=yes \
        -L "module-null-sink sink_name=demo norewinds=1 sink_properties=device.description=Demo" \
        -L "module-native-protocol-unix auth-anonymous=1 socket=$work/sound/native" \
        >"$work/sound.log" 2>&1 </dev/null &
    helpers+=($!)
    local tries
    for ((tries = 0; tries < 100; ++tries)); do
        [ -S "$work/sound/native" ] && break
        kill -0 "${helpers[-1]}" 2>/dev/null || break
        sleep 0.1
    done
    [ -S "$work/sound/native" ] || { cat "$work/sound.log" >&2; fail "no sound server"; }
    setsid "$bin/beat-player" >"$work/beat.log" 2>&1 </dev/null &
    helpers+=($!)
}

# Outlives the program, which tells it when it is quit.
start_service() {
    local output tries
    if [ -n "$plain" ]; then exec {output}>&1; else exec {output}>"$work/service.log"; fi
    setsid "$bin/online-server" --product "$work/product.json" ${seconds:+--check} >&"$output" </dev/null &
    service=$!
    exec {output}>&-
    for ((tries = 0; tries < 100; ++tries)); do
        [ -s "$work/product.json" ] && break
        kill -0 "$service" 2>/dev/null || break
        sleep 0.1
    done
    [ -s "$work/product.json" ] || fail "no online service"
    export LUMIVAR_PRODUCT="$work/product.json"
}

# Behind the program's own window, so that it is not covered by that.
show_matrix() {
    until grep -qs "A new controller has been added" "$work/program.log"; do sleep 0.2; done
    exec setsid "$bin/light-viewer"
}

# Sound and display servers are found through the folder that is about to change.
keep_servers_reachable() {
    local old=${XDG_RUNTIME_DIR:-}
    [ -n "$old" ] || return 0
    if [ -n "${WAYLAND_DISPLAY:-}" ] && [ "${WAYLAND_DISPLAY#/}" = "$WAYLAND_DISPLAY" ]; then
        export WAYLAND_DISPLAY="$old/$WAYLAND_DISPLAY"
    fi
    [ -S "$old/pulse/native" ] && export PULSE_SERVER="${PULSE_SERVER:-unix:$old/pulse/native}"
    export PIPEWIRE_RUNTIME_DIR="${PIPEWIRE_RUNTIME_DIR:-$old}"
}

use_private_folders() {
    mkdir -p "$work"/{config/Lumivar,data,cache,tmp}
    mkdir -m 700 "$work/run"
    keep_servers_reachable
    export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_CACHE_HOME="$work/cache"
    export XDG_RUNTIME_DIR="$work/run" TMPDIR="$work/tmp"
    cat >"$work/config/Lumivar/controllers.json" <<JSON
{
    "$model:01020304": {
        "kindName": "$name",
        "brightness": 0.8,
        "enable": true,
        "installDirection": 0,
        "workMode": "${effect%.*}",
        "subMode": "$effect",
        "nbLeds": $leds,
        "ledPerUnit": 1,
        "adjustableLength": false,
        "unavailable_modes": []
    }
}
JSON
}

use_private_folders
viewer=""
simulation=strip-simulator
stage=()
if [ -n "$matrix" ]; then
    cp -r "$bin/effects/graphics" "$work/config/Lumivar/pixel_source" || fail "no pictures to play"
    if [ -n "$virtual" ]; then
        set -- --auto_startup "$@"
    else
        show_matrix >"$work/viewer.log" 2>&1 </dev/null &
        helpers+=($!)
        viewer=--viewer
    fi
elif [ -n "$music" ]; then
    start_beat
    [ -z "$virtual" ] || set -- --auto_startup "$@" # who reads lines wants no window
elif [ -n "$wayland" ]; then
    simulation=wayland-stage
    stage=(--answer "$wayland")
    if [ "$wayland" = restored ]; then
        stage=(--answer no --token consent)
        echo '{"runtime.screenCastToken": "consent"}' >"$work/config/Lumivar/app.json"
    fi
    [ -z "$virtual" ] || export QT_QPA_PLATFORM=offscreen
elif [ -n "$virtual" ]; then
    start_virtual_screen
    set -- --auto_startup "$@" # its window would cover what there is to follow
fi

[ -z "$online" ] || start_service

arguments=(--ports "$work/ports.json" --model "$model" --serial 01020304 --leds "$leds" --rate 11520
    --log "$work/program.log" $viewer)
[ -n "$plain" ] && arguments+=(--plain)
if [ -n "$seconds" ]; then
    arguments+=(--quit-after "${seconds}s" --patience 60s)
    [ "$wayland" = no ] || arguments+=(--check)
fi

# In the background, because only then a signal to this script is handled at once.
"$bin/$simulation" "${arguments[@]}" ${stage[@]+"${stage[@]}"} -- "$bin/lumivar" "$@" <&0 &
simulator=$!
wait "$simulator"
status=$?
simulator=""
end_service
if [ "$status" -ne 0 ]; then
    echo "--- the program's last words:" >&2
    tail -n 40 "$work/program.log" >&2
fi
