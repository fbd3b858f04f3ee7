#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says. With --fix it formats them.
set -eu -o pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
# One version on every system, because they differ in details. Not every system has it, so ./test.sh does not ask
# for it. And no git, which knows nothing of a source archive.
formatter=clang-format-14
command -v "$formatter" >/dev/null || scripts/deps.sh format ||
    { echo "check-format.sh: without $formatter nothing can be said about the format" >&2; exit 1; }
find bench plugins src tests tools \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 "$formatter" "${mode[@]}"
