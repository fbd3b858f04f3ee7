#!/usr/bin/env bash
# Makes the installer for Windows, build/windows/lumivar-VERSION-setup.exe, of the folder that build.sh has made.
# Usage: scripts/windows/installer.sh [FOLDER [TREE]]
#   FOLDER  the program, by default build/windows/lumivar
#   TREE    the build tree, for version, names and icon; by default build/windows/tree
set -eu -o pipefail
cd "$(dirname "$0")/../.."
folder=$(cd "${1:-build/windows/lumivar}" && pwd)
tree=$(cd "${2:-build/windows/tree}" && pwd)
scripts/deps.sh windows

setting() { sed -n "s/^$1:[A-Z]*=//p" "$tree/CMakeCache.txt"; }
version=$(setting CMAKE_PROJECT_VERSION)
out=$PWD/build/windows/lumivar-$version-setup.exe
files=$PWD/build/windows/installed-files.txt
mkdir -p build/windows

# Folders first, the deepest first, as the installer wants them. It reads the list byte by byte.
{
    (cd "$folder" && find . -mindepth 1 -type d -printf '%P/\n' | LC_ALL=C sort -r)
    (cd "$folder" && find . -type f -printf '%P\n' | LC_ALL=C sort)
    echo Uninstall.exe
} | tr / '\\' >"$files"
if LC_ALL=C grep -q '[^ -~]' "$files"; then
    echo "installer.sh: a file name has other letters than ASCII's" >&2
    exit 1
fi

makensis -V2 -WX -INPUTCHARSET UTF8 -DPRODUCT="$(setting LUMIVAR_PRODUCT)" -DMAKER="$(setting LUMIVAR_MAKER)" \
    -DSITE="$(setting LUMIVAR_WEB_SITE)" -DVERSION="$version" -DFOLDER="$folder" -DFILES="$files" \
    -DKILOBYTES="$(du -sk --apparent-size "$folder" | cut -f1)" -DICON="$tree/generated/icons/lumivar.ico" \
    -DOUT="$out" packaging/windows/lumivar.nsi
echo "The installer is $out ($(du -h "$out" | cut -f1))"
