#!/usr/bin/env bash
# Lets the program run for hours with simulated strips, screen and sound while things go wrong, and reports.
# Usage: scripts/soak.sh HOURS [FOLDER [SEED]]      report.md, soak.svg and soak.csv come into build/soak or FOLDER
#        scripts/soak.sh --report FILE.csv FILE.svg   table and picture once more, also of a run that goes on
set -u
[ "${1:-}" != --report ] || exec "$(dirname "$0")/soak-report.py" "${@:2}"
cd "$(dirname "$0")/.."
out=${2:-build/soak}
scripts/build.sh bench scenario_soak || exit 2
# A copy, because later builds may come.
mkdir -p "$out" && rm -rf "$out/bin" "$out/lib" && cp -r build/bench/bin build/bench/lib "$out" || exit 2
cp scripts/soak-report.py "$out"
# In a session of its own, so that a Ctrl-C reaches the scenario only after this, and its servers not at all.
setsid "$out/bin/scenario_soak" "$1" "$out/soak.csv" ${3:+"$3"} &
scenario=$!
trap 'kill "$scenario" 2>/dev/null' INT TERM HUP
until wait "$scenario"; status=$?; ! kill -0 "$scenario" 2>/dev/null; do :; done
python3 "$out/soak-report.py" "$out/soak.csv" "$out/soak.svg" >"$out/report.md" || status=1
cat "$out/report.md"
exit "$status"
