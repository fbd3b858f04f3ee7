#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests. Usage: ./test.sh [PRESET] [ctest arguments]
# PRESET is dev (the default), asan or tsan.
set -eu
cd "$(dirname "$0")"
preset=dev
case "${1:-}" in dev | asan | tsan) preset=$1; shift ;; esac

scripts/deps.sh build test
scripts/build.sh "$preset"
# Most tests wait for processes, lines and timers; with a sanitizer they compute.
jobs=$(nproc)
[ "$preset" != dev ] || jobs=$((jobs * 4))
ctest --test-dir "build/$preset" --output-on-failure -j "$jobs" "$@"
