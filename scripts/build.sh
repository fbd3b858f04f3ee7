#!/usr/bin/env bash
# Configures where needed and builds. Usage: scripts/build.sh PRESET [targets]
set -eu
cd "$(dirname "$0")/.."
preset=$1; shift
[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
cmake --build "build/$preset" ${1:+--target "$@"}
