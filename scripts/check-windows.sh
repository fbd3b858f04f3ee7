#!/usr/bin/env bash
# Type-checks every source for Windows with the mingw compiler against the local Qt headers (no linking).
# Usage: scripts/check-windows.sh [file.cpp ...]   default: all sources of the program, tools and plug-ins
set -u
cd "$(dirname "$0")/.."
out=build/windows-check
headers=$out/headers generated=$out/generated
mkdir -p "$headers" "$generated" "$out/objects"

qt=$(pkg-config --variable=includedir Qt5Core)
tools=$(pkg-config --variable=host_bins Qt5Core)
# Only these: the whole of /usr/include would shadow the compiler's own headers with glibc's.
ln -sfn /usr/include/opencv4/opencv2 "$headers/opencv2"
ln -sfn /usr/include/log4cplus "$headers/log4cplus"
ln -sfn /usr/include/jsoncpp/json "$headers/json"
for header in zip.h zipconf.h sodium.h sodium; do ln -sfn "/usr/include/$header" "$headers/$header"; done

export compiler="ccache x86_64-w64-mingw32-g++-posix"
modules=""
for module in Core Gui Widgets Network SerialPort; do modules+=" -isystem $qt/Qt$module"; done
export flags="-std=c++17 -c -O0 -Wall -Wextra -Wno-attributes -Werror=return-type -flarge-source-files
    -DWIN32 -D_WIN32_WINNT=0x0A00 -DWINVER=0x0A00 -DNOMINMAX -DWIN32_LEAN_AND_MEAN
    -DQT_CORE_LIB -DQT_GUI_LIB -DQT_WIDGETS_LIB -DQT_NETWORK_LIB -DQT_SERIALPORT_LIB -DQT_MESSAGELOGCONTEXT
    -isystem $qt $modules -isystem $headers -I$generated -Isrc -Itools"

sed 's/@[A-Z_]*@//' src/support/net/ProductSettings.in.h >"$generated/CompiledProductSettings.h"
# With these moc sees the Windows side of a header; the modules are those whose interfaces classes of ours name.
x86_64-w64-mingw32-g++-posix -std=c++17 -dM -E -x c++ /dev/null >"$out/predefines.h"
run_moc() {
    "$tools/moc" --include "$out/predefines.h" -I"$qt" -I"$qt/QtCore" -I"$qt/QtGui" -I"$qt/QtWidgets" -Isrc "$1" -o "$2.new" || return 1
    cmp -s "$2.new" "$2" && rm "$2.new" || mv "$2.new" "$2"
}
while IFS= read -r form; do
    "$tools/uic" "$form" -o "$generated/ui_$(basename "${form%.ui}").h" || exit 1
done < <(find src -name '*.ui')
# The other tools stand on ptys and terminals and belong to development on Linux.
tools_there=(tools/crash-reporter tools/picture-generator)
mapfile -t own_headers < <(find src plugins "${tools_there[@]}" -name '*.h' | sort)
mocs=()
for header in "${own_headers[@]}"; do
    case $header in *_linux.h | *_x11.h) continue ;; esac
    grep -qE '^\s*Q_(OBJECT|GADGET|NAMESPACE)\b' "$header" || continue
    target=$generated/moc_$(basename "${header%.h}").cpp
    run_moc "$header" "$target" || exit 1
    mocs+=("$target")
done
mapfile -t sources < <(find src plugins "${tools_there[@]}" -name '*.cpp' | grep -vE '_(linux|x11|unix)\.cpp$' | sort)
for source in "${sources[@]}"; do
    name=$(basename "${source%.cpp}")
    grep -q "#include \"$name.moc\"" "$source" && { run_moc "$source" "$generated/$name.moc" || exit 1; }
done
if [ $# -gt 0 ]; then sources=("$@"); mocs=(); fi

check() {
    local object
    object=$(echo "$1" | tr / _).o
    # shellcheck disable=SC2086  # flags are split on purpose
    $compiler $flags -I"$(dirname "$1")" "$1" -o "build/windows-check/objects/$object" || { echo "FAILED $1"; return 1; }
}
export -f check
printf '%s\0' "${sources[@]}" "${mocs[@]}" | nice xargs -0 -P"$(nproc)" -I{} bash -c 'check "$1"' _ {} || exit 1
echo "${#sources[@]} sources type-check for Windows"
