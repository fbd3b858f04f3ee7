#!/usr/bin/env bash
# Searches for inputs that break a reader. Usage: scripts/fuzz.sh [TARGET|all] [SECONDS]   (all, 1200 each)
# Works below build/fuzz/run: corpus/ what reached new code, minimised, where the next run begins; finds/ what broke
# something; logs/; results/. A run of all that was interrupted goes on where it was, JOBS=2 runs two targets at a
# time. Ends with the table of all results. A find is run again by
#   build/fuzz/tests/lumivar_fuzz TARGET FILE       (LUMIVAR_FUZZ_LOG=1 shows what is logged)
# and kept, once it is mended, as tests/fuzz/corpus/TARGET/NAME, which the tests run.
set -eu
cd "$(dirname "$0")/.."
target=${1:-all}
seconds=${2:-1200}
most_finds=5 # of one target in one run
fuzzer=$PWD/build/fuzz/tests/lumivar_fuzz # which works in a folder of its own
run=$PWD/build/fuzz/run
corpus=$PWD/tests/fuzz
TMPDIR=$(mktemp -d "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")/lumivar-fuzz-XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1:symbolize=1 UBSAN_OPTIONS=print_stacktrace=1
export DBUS_SESSION_BUS_ADDRESS=disabled: DBUS_SYSTEM_BUS_ADDRESS=disabled:

edges() { # SELECTOR LOG: edges covered in the first or last line that tells them
    grep -ohE 'cov: [0-9]+' "$2" | "$1" -n 1 | cut -d ' ' -f 2
}

fuzz_one() {
    local name=$1 seeds=$corpus/corpus/$1 kept=$run/corpus/$1 log=$run/logs/$1.log
    local dictionary=$corpus/dictionaries/$1 deadline=$((SECONDS + seconds)) executions finds=0 left
    mkdir -p "$kept" "$run/finds" "$run/results"
    mkdir -p "$run/logs" && : >"$log"
    rm -f "$run/finds/$name-"*
    [ -f "$dictionary" ] || dictionary=$corpus/dictionaries/json
    while left=$((deadline - SECONDS)); [ "$left" -gt 0 ]; do
        "$fuzzer" "$name" -max_total_time="$left" -timeout=20 -rss_limit_mb=2048 -malloc_limit_mb=512 -max_len=4096 \
            -print_final_stats=1 -dict="$dictionary" -artifact_prefix="$run/finds/$name-" "$kept" "$seeds" \
            >>"$log" 2>&1 && break
        left=$finds
        finds=$(find "$run/finds" -name "$name-*" | wc -l)
        [ "$finds" -gt "$left" ] || { tail -n 3 "$log" >&2; return 1; }
        [ "$finds" -lt "$most_finds" ] || break
    done
    executions=$(awk '/^stat::number_of_executed_units/ { sum += $2 } END { print sum + 0 }' "$log")
    rm -rf "$kept.whole" && mv "$kept" "$kept.whole" && mkdir "$kept"
    "$fuzzer" "$name" -merge=1 "$kept" "$kept.whole" "$seeds" >>"$log.merge" 2>&1 && rm -rf "$kept.whole" "$log.merge" ||
        { rm -rf "$kept" && mv "$kept.whole" "$kept"; } # what the merge cannot do without a find stays as it is
    printf '| %s | %s | %s | %s | %s | %s | %s |\n' "$name" "$((SECONDS - deadline + seconds))" "$executions" \
        "$(edges head "$log")" "$(edges tail "$log")" "$(find "$kept" -type f | wc -l)" "$finds" >"$run/results/$name"
    cat "$run/results/$name"
}

if [ "$target" = --one ]; then # of a run of all
    shift
    seconds=$2
    fuzz_one "$1"
    touch "$run/done/$1"
    exit
fi

scripts/deps.sh build fuzz
scripts/build.sh fuzz lumivar_fuzz >/dev/null
if [ "$target" != all ]; then
    fuzz_one "$target"
else
    [ "$(cat "$run/done/.seconds" 2>/dev/null || true)" = "$seconds" ] || rm -rf "$run/done"
    mkdir -p "$run/done" && echo "$seconds" >"$run/done/.seconds"
    "$fuzzer" | while read -r name; do
        [ -e "$run/done/$name" ] || echo "$name"
    done | xargs -r -P "${JOBS:-1}" -I NAME "$0" --one NAME "$seconds"
    rm -rf "$run/done"
fi
echo
echo "| Target | Seconds | Executions | Edges at the start | Edges | Inputs | Finds |"
echo "|---|---|---|---|---|---|---|"
cat "$run/results/"*
find "$run/finds" -type f | sed 's/^/find: /'
