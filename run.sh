#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program; where there is no LED device or no display, the
# demo: a simulated strip in this terminal that the program lights for real.
# Usage: ./run.sh [--app | --demo] [--seconds N] [--plain] [--virtual] [--music | --matrix | --wayland[=ANSWER]]
#        [--online] [arguments of the program]
#   --doctor     tells in the terminal what stands in the way of light
#   --app        only the program, whatever is connected
#   --demo       the demo, even with a device
#   --seconds N  the demo ends after so long; without a terminal and a display it takes 10 seconds
#   --plain      the demo prints lines of text instead of drawing
#   --virtual    the demo follows a virtual screen even where there is a display
#   --music      the demo follows a beat that it plays on a sound server of its own, unheard; with a device and
#                a display the program itself starts and hears what your loudspeaker plays: choose music there
#   --matrix     the demo plays pictures on an LED matrix, which a window shows as well where there is a display
#   --wayland    the demo follows the screen of a Wayland desktop without one: its portal asks you here, keys end the
#                sharing and kill what stands behind it, and the window says what a user would be told; ANSWER, one of
#                ask, yes, no and restored, says how you answer
#   --online     the demo has an online service on this machine beside it: the program looks there for its latest
#                version and for the picture of the home page, and feedback can be sent from its help
set -eu
cd "$(dirname "$0")"

mode=auto
stage=""
demo=()
while [ $# -gt 0 ]; do
    case $1 in
    --app) mode=app ;;
    --doctor) mode=app; break ;;
    --demo) mode=demo ;;
    --plain | --virtual | --matrix | --online) mode=demo; demo+=("$1") ;;
    --wayland | --wayland=ask | --wayland=yes | --wayland=no | --wayland=restored)
        mode=demo; stage=stage; demo+=("$1") ;;
    --music) demo+=("$1") ;; # a device has its own way to show it
    --seconds)
        [[ ${2:-} =~ ^[0-9]+$ ]] || { echo "run.sh: --seconds needs a number" >&2; exit 2; }
        mode=demo; demo+=(--seconds "$2"); shift ;;
    -h | --help) sed -n '2,19s/^# \{0,1\}//p' "$0"; exit 0 ;;
    --) shift; break ;;
    *) break ;;
    esac
    shift
done

have_device() {
    local port
    for port in /dev/ttyUSB* /dev/ttyACM*; do
        [ -e "$port" ] && return 0
    done
    return 1
}
have_display() { [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; }

# shellcheck disable=SC2086  # a group, or none
scripts/deps.sh build run $stage
scripts/build.sh release lumivar strip-simulator moving-picture beat-player light-viewer online-server wayland-stage

if [ "$mode" = app ] || { [ "$mode" = auto ] && have_device && have_display; }; then
    exec build/release/bin/lumivar "$@"
fi
exec scripts/demo.sh build/release/bin ${demo[@]+"${demo[@]}"} -- "$@"
