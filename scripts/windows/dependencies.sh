#!/usr/bin/env bash
# Cross-builds what the Windows program stands on, from Debian's own source packages, into a cache folder
# ($LUMIVAR_WINDOWS_CACHE, by default ~/.cache/lumivar-windows):
#   sources/  the source packages, checked against sources.sha256      prefix/  what was built and installed
#   logs/     one log for each step                                    stamps/  what each finished step was made with
# What is finished stays; a run that was stopped goes on where it was. A step is done anew when its version or its
# options change. Usage: scripts/windows/dependencies.sh [--pin]   --pin: take up the versions Debian offers now
set -eu
here=$(cd "$(dirname "$0")" && pwd)
pins=$here/sources.sha256
cache=${LUMIVAR_WINDOWS_CACHE:-$HOME/.cache/lumivar-windows}
mkdir -p "$cache"/{sources,source,build,logs,stamps,prefix}
cache=$(cd "$cache" && pwd)
prefix=$cache/prefix
jobs=${LUMIVAR_WINDOWS_JOBS:-$(nproc)}
toolchain=$here/../../cmake/WindowsToolchain.cmake
export LUMIVAR_WINDOWS_PREFIX=$prefix
# Debian's compilers are steered by these when they are set; nothing of the caller's shall leak in.
unset CFLAGS CXXFLAGS LDFLAGS CPPFLAGS PKG_CONFIG_PATH

exec 9>"$cache/lock"
flock -n 9 || { echo "Another run is building the dependencies; waiting for it."; flock 9; }

fail() { echo "$*" >&2; exit 1; }
as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"
    elif command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; then sudo "$@"
    else fail "This needs the rights of root: $*"; fi
}
offered() { # the versions of the source package $1 that apt knows
    apt-cache showsrc --only-source "$1" 2>/dev/null | awk '/^Version:/ { print $2 }' | sort -uV
}

# Adds the source packages of the very archives the system already uses.
enable_source_packages() {
    local list=/etc/apt/sources.list.d/debian.sources target=/etc/apt/sources.list.d/lumivar-source-packages
    echo "apt knows no source packages; adding $target.{sources,list} for them."
    if [ -f "$list" ]; then
        sed 's/^Types:.*/Types: deb-src/' "$list" | as_root tee "$target.sources" >/dev/null
    else
        sed -n 's/^deb /deb-src /p' /etc/apt/sources.list | as_root tee "$target.list" >/dev/null
    fi
    as_root apt-get update -qq
}

packages() { sed -n 's/^[0-9a-f]*  \(.*\)_\(.*\)\.dsc$/\1 \2/p' "$pins"; }
version_of() { packages | awk -v name="$1" '$1 == name { print $2 }'; }
files_of() { # the files of the source package $1 with their checksums
    local version; version=$(version_of "$1")
    grep -F "  $1_${version%-*}" "$pins"
}

fetch() {
    local package=$1 version; version=$(version_of "$1")
    (cd "$cache/sources" && files_of "$package" | sha256sum --check --status 2>/dev/null) && return
    [ -n "$(offered "$package")" ] || enable_source_packages
    offered "$package" | sed 's/^[0-9]*://' | grep -qxF "$version" ||
        fail "$package $version is no longer offered, but: $(offered "$package" | tr '\n' ' ')
Look at what changed and take it up with scripts/windows/dependencies.sh --pin"
    (cd "$cache/sources" && apt-get source -qq --download-only "$package=$version") >"$cache/logs/fetch-$package.log" 2>&1 ||
        fail "$package could not be fetched, see $cache/logs/fetch-$package.log"
    (cd "$cache/sources" && files_of "$package" | sha256sum --check --quiet) || fail "$package is not what was pinned"
}

if [ "${1:-}" = --pin ]; then
    for package in $(packages | cut -d' ' -f1); do
        [ -n "$(offered "$package")" ] || enable_source_packages
        version=$(offered "$package" | tail -n 1)
        (cd "$cache/sources" && apt-get source -qq --download-only "$package=$version" &&
            dsc=${package}_${version#*:}.dsc &&
            mapfile -t named < <(sed -n '/^Checksums-Sha256:/,/^[^ ]/s/^ [0-9a-f]* [0-9]* //p' "$dsc") &&
            sha256sum "$dsc" "${named[@]}") || exit 1
    done >"$pins.new"
    mv "$pins.new" "$pins"
    exit 0
fi

# step NAME PACKAGE WHAT...   builds PACKAGE with the function make_NAME unless just that has been done already.
# A source folder is complete or not there, and the build folder stays until the step is through.
step() {
    local name=$1 package=$2 key started=$SECONDS source=$cache/source/$1 build=$cache/build/$1
    key=$(version_of "$package"; echo "$compiler"; declare -f "make_$name" cmake_build)
    [ "$(cat "$cache/stamps/$name" 2>/dev/null)" = "$key" ] && return
    echo "Building $name $(version_of "$package") ..."
    fetch "$package"
    # Half a build with other options is worth nothing.
    [ "$(cat "$build.key" 2>/dev/null)" = "$key" ] || { rm -rf "$build" "$source"; echo "$key" >"$build.key"; }
    if [ ! -d "$source" ]; then
        rm -rf "$source.part"
        dpkg-source --no-check -x "$cache/sources/${package}_$(version_of "$package").dsc" "$source.part" \
            >"$cache/logs/unpack-$name.log" 2>&1 || fail "$name: see $cache/logs/unpack-$name.log"
        mv "$source.part" "$source"
    fi
    mkdir -p "$build"
    # Another shell, as -e would not hold in a condition.
    if ! (cd "$build" && nice -n 10 bash -eu -c "$(declare -f "make_$name" cmake_build); make_$name" 9>&-) \
        >"$cache/logs/$name.log" 2>&1; then
        tail -n 20 "$cache/logs/$name.log" >&2
        fail "$name could not be built, see $cache/logs/$name.log"
    fi
    echo "$key" >"$cache/stamps/$name"
    rm -rf "$build" "$build.key" "$source"
    echo "  done in $((SECONDS - started)) s"
}
export cache prefix jobs toolchain

cmake_build() { # NAME OPTIONS...
    local name=$1; shift
    cmake -S "$cache/source/$name" -B . -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=ON "$@"
    cmake --build . -j "$jobs"
    cmake --install . --strip
}

# Shared libraries throughout: the program's own libraries and its plug-ins have to see one and the same logger.
make_sodium() {
    [ -f "$cache/source/sodium/configure" ] || (cd "$cache/source/sodium" && autoreconf --install)
    [ -f Makefile ] || "$cache/source/sodium/configure" --host=x86_64-w64-mingw32 --prefix="$prefix" --disable-static --quiet
    make -j "$jobs"
    make install-strip
}
make_zip() { # zlib is linked into it; OpenCV's core alone asks for zlib1.dll, the compiler's kit has that
    cmake_build zip -DZLIB_LIBRARY=/usr/x86_64-w64-mingw32/lib/libz.a -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF \
        -DENABLE_MBEDTLS=OFF -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF \
        -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF
}
make_json() {
    cmake_build json -DJSONCPP_WITH_TESTS=OFF -DJSONCPP_WITH_POST_BUILD_UNITTEST=OFF -DBUILD_STATIC_LIBS=OFF \
        -DBUILD_OBJECT_LIBS=OFF
}
make_log() { # its idle threads are gone when it wants to join them at the end, and no process would ever end
    cmake_build log -DUNICODE=OFF -DLOG4CPLUS_BUILD_TESTING=OFF -DLOG4CPLUS_BUILD_LOGGINGSERVER=OFF \
        -DLOG4CPLUS_ENABLE_DECORATED_LIBRARY_NAME=OFF -DWITH_UNIT_TESTS=OFF -DLOG4CPLUS_ENABLE_THREAD_POOL=OFF
}
make_opencv() { # the two modules the program uses, without whatever reads files, films or graphics cards
    cmake_build opencv -DBUILD_LIST=core,imgproc -DBUILD_TESTS=OFF -DBUILD_PERF_TESTS=OFF -DBUILD_EXAMPLES=OFF \
        -DBUILD_opencv_apps=OFF -DBUILD_JAVA=OFF -DWITH_IPP=OFF -DWITH_ITT=OFF -DBUILD_ITT=OFF -DWITH_OPENCL=OFF \
        -DWITH_OPENCL_D3D11_NV=OFF -DWITH_DIRECTX=OFF -DWITH_CAROTENE=OFF -DWITH_ADE=OFF -DWITH_PROTOBUF=OFF \
        -DWITH_QUIRC=OFF -DWITH_FFMPEG=OFF -DWITH_TIFF=OFF -DWITH_WEBP=OFF -DWITH_OPENJPEG=OFF -DWITH_JASPER=OFF \
        -DWITH_OPENEXR=OFF -DWITH_PNG=OFF -DWITH_JPEG=OFF -DBUILD_ZLIB=OFF -DCPU_DISPATCH= -DWITH_MSMF=OFF \
        -DWITH_DSHOW=OFF -DWITH_WIN32UI=OFF
}
make_qt() { # configured once: make goes on with a half-built tree
    # The names of two system libraries differ in case from the files, which matters here.
    sed -i 's/"-lSecur32" "-lCrypt32"/"-lsecur32" "-lcrypt32"/' "$cache/source/qt/src/network/ssl/ssl.pri"
    # For OpenGL, which is not in it, it would ask Direct3D for the graphics adapter before the first window: half a second.
    sed -i 's/screenForGL = QWindowsWindow::forcedScreenForGLWindow(w)/screenForGL = nullptr/' \
        "$cache/source/qt/src/plugins/platforms/windows/qwindowswindow.cpp"
    [ -f configured ] || "$cache/source/qt/configure" -xplatform win32-g++ \
        -device-option CROSS_COMPILE=x86_64-w64-mingw32- -prefix "$prefix" -extprefix "$prefix" -hostprefix "$prefix" \
        -release -shared -opensource -confirm-license \
        -no-opengl -no-dbus -no-icu -no-glib -no-openssl -schannel \
        -qt-zlib -qt-pcre -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz -qt-doubleconversion \
        -no-feature-tabletevent -no-feature-sql -no-feature-printer -no-feature-vulkan -no-feature-bearermanagement \
        -nomake examples -nomake tests -no-compile-examples
    touch configured
    make -j "$jobs"
    make install
}

# The compiler's own runtime comes in two kinds; the one with C++ threads must be the one in use.
compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion) || fail "g++-mingw-w64-x86-64-posix is missing: scripts/deps.sh windows"
step sodium libsodium
step zip libzip
step json libjsoncpp
step log log4cplus
step opencv opencv
step qt qtbase-opensource-src
echo "The dependencies are complete in $prefix"
