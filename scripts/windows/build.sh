#!/usr/bin/env bash
# Cross-builds the whole program for 64-bit Windows. Usage: scripts/windows/build.sh [--tests] [cmake -D options]
#   build/windows/lumivar   one folder that runs on a Windows without anything else installed
#   build/windows/symbols   what a debugger needs beside a minidump: the debug information of our own files
#   build/windows/tree      the build tree; with --tests it has the test programs that run there
# Packages, dependencies (see dependencies.sh) and whatever else is missing are provided first.
set -eu
cd "$(dirname "$0")/../.."
tests=OFF
[ "${1:-}" = --tests ] && { tests=ON; shift; }

scripts/deps.sh windows
scripts/windows/dependencies.sh
cache=$(cd "${LUMIVAR_WINDOWS_CACHE:-$HOME/.cache/lumivar-windows}" && pwd)
export LUMIVAR_WINDOWS_PREFIX=$cache/prefix
out=build/windows folder=build/windows/lumivar symbols=build/windows/symbols tool=x86_64-w64-mingw32

# The pictures are drawn while building, so what draws them has to run here.
host=$out/host
[ -f $host/build.ninja ] || cmake -S . -B $host -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DLUMIVAR_PICTURE_GENERATOR_ALONE=ON >/dev/null
cmake --build $host --target picture-generator

cmake -S . -B $out/tree -G Ninja --toolchain cmake/WindowsToolchain.cmake -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG" -DLUMIVAR_TESTS=$tests \
    -DLUMIVAR_PICTURE_GENERATOR="$PWD/$host/generators/picture-generator" "$@" >/dev/null
cmake --build $out/tree

rm -rf $folder $symbols
mkdir -p $folder $symbols
cmake --install $out/tree --prefix "$PWD/$folder" >/dev/null
for file in $folder/*.exe $folder/*.dll; do
    name=$(basename "$file")
    $tool-objcopy --only-keep-debug "$file" "$symbols/$name.debug"
    $tool-strip --strip-unneeded "$file"
    (cd $symbols && $tool-objcopy --add-gnu-debuglink="$name.debug" "$OLDPWD/$file")
done

# The libraries that the files need, and those need, until only Windows' own are left: those the compiler's kit knows.
runtime=$(dirname "$($tool-g++-posix -print-file-name=libstdc++-6.dll)")
places=("$LUMIVAR_WINDOWS_PREFIX/bin" "$runtime" "/usr/$tool/lib")
collect_libraries() {
    local file name place
    for file in "$@"; do
        $tool-objdump -p "$file" | sed -n 's/^\s*DLL Name: //p' | while read -r name; do
            [ -e "$folder/$name" ] && continue
            for place in "${places[@]}"; do
                [ -e "$place/$name" ] || continue
                cp "$place/$name" $folder/
                $tool-strip --strip-unneeded "$folder/$name"
                collect_libraries "$folder/$name"
                continue 2
            done
            [ -e "/usr/$tool/lib/lib$(basename "${name,,}" .dll).a" ] && continue
            [ -e "/usr/$tool/lib/lib$(basename "${name,,}" .drv).a" ] && continue
            echo "$(basename "$file") needs $name, which is nowhere" >&2
            exit 1
        done
    done
}
mapfile -t files < <(find $folder -name '*.exe' -o -name '*.dll')
collect_libraries "${files[@]}"
echo "The program is in $folder ($(du -sh $folder | cut -f1))"
