#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says. With --fix it formats them.
cd "$(dirname "$0")/.."
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
git ls-files -z -co --exclude-standard '*.cpp' '*.h' | xargs -0 clang-format "${mode[@]}"
