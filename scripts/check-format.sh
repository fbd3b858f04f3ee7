#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says. With --fix it formats them.
set -eu -o pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
# One version on every system, because they differ in details; and no git, which knows nothing of a source archive.
find bench plugins src tests tools \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 clang-format-14 "${mode[@]}"
