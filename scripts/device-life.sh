#!/usr/bin/env bash
# Lives through random sequences of what happens to devices, on simulated strips and without waiting; a million unless
# told otherwise. Usage: scripts/device-life.sh [--sequences N] [--seed S] [--from FIRST] [--jobs J]
# A sequence again, with the program's log: SHOW_LOG=1 scripts/device-life.sh --steps "plug(0,0)" [--order O]
set -eu
cd "$(dirname "$0")/.."
scripts/build.sh "${PRESET:-dev}" tst_device_life >/dev/null
[ $# -gt 0 ] || set -- --sequences 1000000 --jobs "$(nproc)"
exec "build/${PRESET:-dev}/tests/tst_device_life" "$@"
