#!/usr/bin/env bash
# Type-checks every source for Windows with the mingw compiler against the local Qt headers (no linking), those anew
# that have changed, or what they include, or that did not pass.
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

mingw=x86_64-w64-mingw32-g++-posix
modules=""
for module in Core Gui Widgets Network SerialPort; do modules+=" -isystem $qt/Qt$module"; done
# shellcheck disable=SC2116,SC2086  # one line of it
flags=$(echo "-std=c++17 -c -O0 -Wall -Wextra -Wno-attributes -Werror=return-type -flarge-source-files
    -DWIN32 -D_WIN32_WINNT=0x0A00 -DWINVER=0x0A00 -DNOMINMAX -DWIN32_LEAN_AND_MEAN
    -DLibLumivar_EXPORTS -Dlumivar_devices_EXPORTS -Dlumivar_effect_contract_EXPORTS
    -DQT_CORE_LIB -DQT_GUI_LIB -DQT_WIDGETS_LIB -DQT_NETWORK_LIB -DQT_SERIALPORT_LIB -DQT_MESSAGELOGCONTEXT
    -isystem $qt $modules -isystem $headers -I$generated -Isrc -Itools" | tr -s ' \n' ' ')

# Files of the system that are replaced by others come with old dates, so their names, sizes and dates are part of
# every command.
system=$({ $mingw --version; "$tools/moc" --version
    find -L "$qt" "$headers" /usr/x86_64-w64-mingw32 /usr/lib/gcc/x86_64-w64-mingw32 -type f -printf '%p %s %T@\n' | sort
} | sha256sum | cut -c 1-16)

write_if_changed() { cmp -s - "$1" <<<"$2" || echo "$2" >"$1"; }

# What most sources begin with, parsed once. Its text stands for it in the compiler's cache, for every tree.
common=$out/common.h
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1
write_if_changed "$common" "$(printf '#include <%s>\n' QCoreApplication QDebug QFile QHash QImage QJsonArray QJsonObject \
    QMap QPainter QPointer QTimer QWidget algorithm functional memory optional)"
write_if_changed "$generated/CompiledProductSettings.h" "$(sed 's/@[A-Z_]*@//' src/support/net/ProductSettings.in.h)"
# With these moc sees the Windows side of a header; the modules are those whose interfaces classes of ours name.
predefines=$out/predefines.h
write_if_changed "$predefines" "$($mingw -std=c++17 -dM -E -x c++ /dev/null)"

# The other tools stand on ptys and terminals and belong to development on Linux.
tools_there=(tools/crash-reporter tools/picture-generator)
mapfile -t own_headers < <(find src plugins "${tools_there[@]}" -name '*.h' ! -name '*_linux.h' ! -name '*_x11.h' \
    -exec grep -lE '^\s*Q_(OBJECT|GADGET|NAMESPACE)\b' {} + | sort)
mapfile -t sources < <(find src plugins "${tools_there[@]}" -name '*.cpp' | grep -vE '_(linux|x11|unix)\.cpp$' | sort)
mapfile -t forms < <(find src -name '*.ui' | sort)

made=() steps=$out/build.ninja
build() { printf 'build %s: %s\n' "$1" "$2"; }
add_moc() { build "$2" "moc $1"; made+=("$2"); }
add_check() {
    local object=$out/objects/${1//\//_}.o first=$common.gch
    build "$object" "check $1 | ${2-$common.gch} || generated"
    printf '  folder = %s\n' "${1%/*}"
    [ -z "${2-x}" ] || printf '  first = -include %s -Werror=invalid-pch\n' "$common"
}
{
    cat <<RULES
builddir = $out
rule moc
  command = $tools/moc --include $predefines -I$qt -I$qt/QtCore -I$qt/QtGui -I$qt/QtWidgets -Isrc \$in -o \$out # $system
rule uic
  command = $tools/uic \$in -o \$out # $system
rule common
  command = $mingw $flags -MD -MF \$out.d -x c++-header \$in -o \$out && { echo '$flags'; $mingw --version; $mingw $flags -E -x c++-header \$in; } | sha256sum >\$out.sum # $system
  depfile = \$out.d
rule check
  command = ccache $mingw $flags \$first -I\$folder -MD -MF \$out.d \$in -o \$out # $system
  depfile = \$out.d
  deps = gcc
RULES
    build "$common.gch" "common $common"
    for form in "${forms[@]}"; do
        made+=("$generated/ui_$(basename "${form%.ui}").h")
        build "${made[-1]}" "uic $form"
    done
    mocs=() batches=()
    for header in "${own_headers[@]}"; do
        add_moc "$header" "$generated/moc_$(basename "${header%.h}").cpp"
        case $header in plugins/*) batches+=("${made[-1]}") ;; *) mocs+=("${made[-1]##*/}") ;; esac # a plug-in has one entry point
    done
    while IFS= read -r source; do
        add_moc "$source" "$generated/$(basename "${source%.cpp}").moc"
    done < <(grep -lE '^#include "[A-Za-z_]+\.moc"' "${sources[@]}")
    # Many in one: what else moc writes does not clash.
    for ((i = 0; i < ${#mocs[@]}; i += 30)); do
        batches+=("$generated/mocs_$i.cpp")
        write_if_changed "${batches[-1]}" "$(printf '#include "%s"\n' "${mocs[@]:i:30}")"
    done
    build generated "phony ${made[*]}"
    for source in "${batches[@]}" "${sources[@]}"; do
        case $source in *_win.cpp) add_check "$source" "" ;; *) add_check "$source" ;; esac # no other build would miss an include of theirs
    done
} >"$steps"

wanted=()
for source in "$@"; do wanted+=("$out/objects/${source//\//_}.o"); done
set -o pipefail
nice ninja -f "$steps" -j "$(nproc)" -k 0 "${wanted[@]}" | sed '/^\[[0-9]*\/[0-9]*\] /d; /^ninja: no work/d' || exit 1
[ $# -gt 0 ] && checked=$# || checked=${#sources[@]}
echo "$checked sources type-check for Windows"
