#!/usr/bin/env bash
# Lets calls of the program into the system fail, one in each run from start to end, and judges what becomes of it.
# Usage: scripts/faults.sh [KIND[+] [FIRST [MOST]]]   all kinds, every call from the first one on
#   KIND   of tools/fault-rig/FaultCounts.h; with a plus the call and all that follow fail
#   MOST   numbers that are tried, spread evenly over the calls
# JOBS runs at a time (2). What was tried stands in build/PRESET/faults and is not tried again, so an interrupted run
# goes on where it was; remove the folder after a change. Ends with the table of all results; what the program said in
# a find stands in .reports there. A find is run again by
#   LUMIVAR_FAULT_LOG=1 build/dev/bin/fault-rig KIND NUMBER
set -eu
cd "$(dirname "$0")/.."
preset=${PRESET:-dev}
first=${2:-1}
most=${3:-1000000}
rig=$PWD/build/$preset/bin/fault-rig
results=$PWD/build/$preset/faults
mkdir -p "$results"
scripts/build.sh "$preset" fault-rig >/dev/null
[ -s "$results/.calls" ] || nice "$rig" write 0 2>/dev/null | grep counted >"$results/.calls"

calls() { # KIND
    awk -v kind="${1%+}" '$1 == kind { print $3 }' "$results/.calls"
}

sweep() { # KIND
    local all
    all=$(calls "$1")
    [ -n "$all" ] || { echo "no kind is called $1" >&2; return 1; }
    touch "$results/$1"
    seq "$first" "$all" | awk -v all="$((all - first + 1))" -v most="$most" \
        'int(NR * most / all) != int((NR - 1) * most / all) || most >= all' |
        grep -vxF -f <(cut -d ' ' -f 2 "$results/$1") |
        xargs -r -n 10 -P "${JOBS:-2}" nice "$rig" "$1" >>"$results/$1" 2>>"$results/.reports" || true # finds are told below
}

for kind in ${1:-$(cut -d ' ' -f 1 "$results/.calls")}; do
    sweep "$kind"
done
echo "| Kind | Calls | Tried | Ended with a message | Dark | Finds |"
echo "|---|---|---|---|---|---|"
for file in "$results"/*; do
    kind=$(basename "$file")
    awk -v kind="$kind" -v calls="$(calls "$kind")" '{ ended += / but (code|signal)/; dark += / but dark/; finds += / FIND / }
        END { printf "| %s | %d | %d | %d | %d | %d |\n", kind, calls, NR, ended, dark, finds }' "$file"
done
grep -h " FIND " "$results"/* || true
