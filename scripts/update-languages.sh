#!/usr/bin/env bash
# Brings the catalogues in src/resources/languages up to the texts of sources, forms and data: new texts come in
# unfinished, texts that are gone leave. Usage: scripts/update-languages.sh [FILE.ts...]
# Named files, which need not exist yet, are updated instead of the catalogues.
set -eu -o pipefail
target=()
for file in "$@"; do target+=("$(realpath "$file")"); done
cd "$(dirname "$0")/.."
[ ${#target[@]} -gt 0 ] || target=(src/resources/languages/*.ts)
lupdate=${LUPDATE:-$(PATH=/usr/lib/qt5/bin:$PATH command -v lupdate)}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed -nE 's/^ *"(name|desc)": (".*"),?$/QT_TRANSLATE_NOOP("GroupInformation", \2);/p' \
    data/effects/groups.json >"$work/data.h"
# In one order everywhere, because the catalogues keep it.
find src \( -name '*.cpp' -o -name '*.h' -o -name '*.ui' \) | LC_ALL=C sort >"$work/sources"
echo "$work/data.h" >>"$work/sources"

log=$("$lupdate" "@$work/sources" -locations none -no-obsolete -source-language zh_CN -ts "${target[@]}" 2>&1) ||
    { echo "$log" >&2; exit 1; }
grep -i warning <<<"$log" >&2 || true
