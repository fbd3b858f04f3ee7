#!/usr/bin/env bash
# Runs clang-tidy with the settings of .clang-tidy. Usage: scripts/lint.sh [file.cpp ...], default: all sources
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh build test lint
scripts/build.sh dev
if [ $# -eq 0 ]; then
    mapfile -t files < <(find src tools plugins tests -name '*.cpp' | sort)
    # Sources of another system or of another preset are not built here.
    for file in "${files[@]}"; do
        grep -qF "/$file\"" build/dev/compile_commands.json && set -- "$@" "$file"
    done
fi
printf '%s\0' "$@" | nice xargs -0 -P"$(nproc)" -n 4 clang-tidy --quiet -p build/dev 2>/dev/null
