#!/usr/bin/env bash
# Builds a Debian package for the distribution it runs on into build/package, with the debug symbols in one of their
# own, and checks it. Works in a checkout and in a source archive alike.
# Usage: scripts/package.sh [--version X.Y.Z] [--out FOLDER]
# DEBEMAIL, as everywhere in Debian, is the maintainer's address.
set -eu -o pipefail
cd "$(dirname "$0")/.."
out=build/package
version=""
while [ $# -gt 0 ]; do
    case $1 in
    --version) version=$2; shift ;;
    --out) out=$2; shift ;;
    *) sed -n '2,5s/^# //p' "$0"; exit 2 ;;
    esac
    shift
done
scripts/deps.sh build package

# An export of its own: neither this folder's builds nor its git are in reach.
tree=$out/lumivar
rm -rf "$tree" "$out"/lumivar_* "$out"/lumivar-dbgsym_*
mkdir -p "$tree"
out=$(cd "$out" && pwd)
tree=$out/lumivar
tar -c --exclude=./.git --exclude=./build --exclude=./.cache . | tar -x -C "$tree"
if [ -e .git ] && commit=$(git log -1 --format='%H %ct' 2>/dev/null); then
    echo "$commit" >"$tree/cmake/Commit.txt"
fi
time=$(sed -nE 's/^[0-9a-f]{40} ([0-9]+)$/\1/p' "$tree/cmake/Commit.txt")
time=${time:-$(date +%s)}
# For an upgrade to something.
[ -z "$version" ] || sed -i -E "s/^(project\(lumivar VERSION )[0-9.]+/\1$version/" "$tree/CMakeLists.txt"
version=$(sed -nE 's/^project\(lumivar VERSION ([0-9.]+).*/\1/p' "$tree/CMakeLists.txt")

cp -r "$tree/packaging/debian" "$tree/debian"
mail=${DEBEMAIL:-lumivar@packages.invalid}
sed -i "s/@MAIL@/$mail/" "$tree/debian/control"
cat >"$tree/debian/changelog" <<TEXT
lumivar ($version) unstable; urgency=medium

$(awk '/^## / { ++section; next } section == 1' "$tree/CHANGELOG.md" |
    sed -E 's/^- /  * /; t; s/^ +/    /' | fmt -t -w 78 | grep .)

 -- Lumivar developers <$mail>  $(LC_ALL=C date -u -R -d "@$time")
TEXT

# The build has no home folder, but may have its results from before.
if command -v ccache >/dev/null; then
    CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
    export CCACHE_DIR
fi
# When a file was checked out is nobody's business.
find "$tree" -exec touch -h -d "@$time" {} +
log=$out/build.log
# Without it nothing would be said for minutes where somebody waits.
echo "Building the package of version $version, log in $log"
(cd "$tree" && exec dpkg-buildpackage -b -us -uc -j"$(nproc)") >"$log" 2>&1 </dev/null ||
    { tail -n 40 "$log" >&2; exit 1; }

installed=$tree/debian/lumivar
lintian --fail-on error,warning --tag-display-limit 0 "$out"/lumivar*.*deb
appstreamcli validate --no-net "$installed"/usr/share/metainfo/*.xml
desktop-file-validate "$installed"/usr/share/applications/*.desktop
# What is installed starts, and the man page knows every option.
options=$(QT_QPA_PLATFORM=offscreen "$installed/usr/lib/lumivar/bin/lumivar" --help 2>>"$log" |
    grep -oE -- ' --?[A-Za-z][-A-Za-z_]*')
for option in $options; do
    sed 's/\\//g' "$tree/packaging/linux/lumivar.1" | grep -qE -- "(^| )\"?$option( |\$)" ||
        { echo "package.sh: the man page does not tell of $option" >&2; exit 1; }
done
ls "$out"/lumivar*.*deb
