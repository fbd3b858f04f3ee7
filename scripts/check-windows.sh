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

export mingw=x86_64-w64-mingw32-g++-posix
modules=""
for module in Core Gui Widgets Network SerialPort; do modules+=" -isystem $qt/Qt$module"; done
export flags="-std=c++17 -c -O0 -Wall -Wextra -Wno-attributes -Werror=return-type -flarge-source-files
    -DWIN32 -D_WIN32_WINNT=0x0A00 -DWINVER=0x0A00 -DNOMINMAX -DWIN32_LEAN_AND_MEAN
    -DLibLumivar_EXPORTS -Dlumivar_devices_EXPORTS -Dlumivar_effect_contract_EXPORTS
    -DQT_CORE_LIB -DQT_GUI_LIB -DQT_WIDGETS_LIB -DQT_NETWORK_LIB -DQT_SERIALPORT_LIB -DQT_MESSAGELOGCONTEXT
    -isystem $qt $modules -isystem $headers -I$generated -Isrc -Itools"

# What most sources begin with, parsed once. Its text stands for it in the compiler's cache, for every tree.
export common=$out/common.h CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1
printf '#include <%s>\n' QCoreApplication QDebug QFile QHash QImage QJsonArray QJsonObject QMap QPainter QPointer \
    QTimer QWidget algorithm functional memory optional >"$common"
# shellcheck disable=SC2086  # flags are split on purpose
sum=$({ echo $flags; $mingw --version; $mingw $flags -E -x c++-header "$common"; } | sha256sum)
if [ "$sum" != "$(cat "$common.gch.sum" 2>/dev/null)" ]; then
    # shellcheck disable=SC2086
    $mingw $flags -x c++-header "$common" -o "$common.gch" || exit 1
    echo "$sum" >"$common.gch.sum"
fi

sed 's/@[A-Z_]*@//' src/support/net/ProductSettings.in.h >"$generated/CompiledProductSettings.h"
# With these moc sees the Windows side of a header; the modules are those whose interfaces classes of ours name.
$mingw -std=c++17 -dM -E -x c++ /dev/null >"$out/predefines.h"
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
mocs=() batches=()
for header in "${own_headers[@]}"; do
    case $header in *_linux.h | *_x11.h) continue ;; esac
    grep -qE '^\s*Q_(OBJECT|GADGET|NAMESPACE)\b' "$header" || continue
    target=$generated/moc_$(basename "${header%.h}").cpp
    run_moc "$header" "$target" || exit 1
    case $header in plugins/*) batches+=("$target") ;; *) mocs+=("$target") ;; esac # a plug-in has one entry point
done
mapfile -t sources < <(find src plugins "${tools_there[@]}" -name '*.cpp' | grep -vE '_(linux|x11|unix)\.cpp$' | sort)
for source in "${sources[@]}"; do
    name=$(basename "${source%.cpp}")
    grep -q "#include \"$name.moc\"" "$source" && { run_moc "$source" "$generated/$name.moc" || exit 1; }
done
# Many in one: what else moc writes does not clash.
for ((i = 0; i < ${#mocs[@]}; i += 30)); do
    batches+=("$generated/mocs_$i.cpp")
    printf '#include "%s"\n' "${mocs[@]:i:30}" | sed "s|$generated/||" >"$generated/mocs_$i.cpp"
done
if [ $# -gt 0 ]; then sources=("$@"); batches=(); fi

check() {
    local first="-include $common -Werror=invalid-pch"
    case $1 in *_win.cpp) first= ;; esac # no other build would miss an include of theirs
    # shellcheck disable=SC2086
    ccache $mingw $flags $first -I"${1%/*}" "$1" -o "build/windows-check/objects/${1//\//_}.o" ||
        { echo "FAILED $1"; return 1; }
}
export -f check
printf '%s\0' "${batches[@]}" "${sources[@]}" | nice xargs -0 -P"$(nproc)" -I{} bash -c 'check "$1"' _ {} || exit 1
echo "${#sources[@]} sources type-check for Windows"
