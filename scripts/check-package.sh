#!/usr/bin/env bash
# Takes the package through its life in a fresh minimal system of this distribution: install, light on a simulated strip
# as a normal user, upgrade under the running program, light again, purge. Needs root, and the distribution's mirror the
# first time; build/package keeps what was fetched.
# Usage: scripts/check-package.sh
set -eu -o pipefail
cd "$(dirname "$0")/.."
if [ "$(id -u)" -ne 0 ]; then
    echo "check-package.sh: only root can set up a system to install into" >&2
    exit 1
fi
store=$PWD/build/package
root=$store/system
# Processes and mounts of their own end with the inner run, however it ends. Only then the system can go: nothing of
# this machine's is mounted there any more.
if [ "${1:-}" != --inside ]; then
    scripts/deps.sh build run package
    scripts/build.sh dev strip-simulator
    rm -rf --one-file-system "$root"
    status=0
    unshare --mount --propagation private --pid --fork --kill-child "$0" --inside || status=$?
    rm -rf --one-file-system "$root"
    exit "$status"
fi
trap 'exit 1' INT TERM HUP

fail() {
    echo "check-package.sh: $1" >&2
    tail -n 30 "$store/strip.log" "$home/program.log" >&2 || true
    exit 1
}
step() { echo "--- $*"; }

home=$root/home/tester
. /etc/os-release
mkdir -p "$root" "$store/archives/partial"

# The distribution's own lines of this machine's sources, be they one line or several each.
sources() {
    apt-get indextargets --format '$(ORIGIN) $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v id="$ID" 'tolower($1) == id { print "deb", $2, $3, $4 }' | sort -u
}
[ -n "$(sources)" ] || { apt-get update -qq; [ -n "$(sources)" ] || fail "no sources of $ID in apt's settings"; }

base=$store/$VERSION_CODENAME.tar
if [ ! -f "$base" ]; then
    step "Setting up a minimal $PRETTY_NAME"
    mirror=$(sources | awk -v name="$VERSION_CODENAME" '$3 == name { print $2; exit }')
    components=$(sources | awk '{ print $4 }' | sort -u | paste -sd,)
    debootstrap --variant=minbase --components="$components" "$VERSION_CODENAME" "$root" "$mirror" \
        >"$store/debootstrap.log" 2>&1 || { tail "$store/debootstrap.log" >&2; fail "no minimal system"; }
    tar -C "$root" -cf "$base.new" .
    mv "$base.new" "$base"
else
    tar -C "$root" -xf "$base"
fi
sources >"$root/etc/apt/sources.list"
apt-config dump | grep -iE '^Acquire::[a-z]+::Proxy' >"$root/etc/apt/apt.conf.d/90proxy" || true
mount -t proc proc "$root/proc"
mount -t devpts -o newinstance,ptmxmode=0666,mode=620 devpts "$root/dev/pts"
ln -sf pts/ptmx "$root/dev/ptmx"
mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
mount --bind "$store/archives" "$root/var/cache/apt/archives"
[ ! -e /etc/resolv.conf ] || cp -L /etc/resolv.conf "$root/etc/resolv.conf"

in_system() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} "$@"; }
apt() { in_system apt-get -y -qq -o APT::Sandbox::User=root -o Dpkg::Use-Pty=0 --no-install-recommends "$@" \
    >>"$store/apt.log" 2>&1 || { tail -n 20 "$store/apt.log" >&2; fail "apt-get $1 failed"; }; }

# The display is run by this machine, so that nothing but the package brings libraries into the system, but its socket
# is there: the numbers in locks of other displays mean nothing in this room.
rm -f "$store"/{display,strip.log}
unshare --mount sh -c 'mount --bind "$1/tmp" /tmp && shift && exec "$@"' - "$root" Xvfb -displayfd 3 -screen 0 1280x720x24 -noreset -nolisten tcp 3>"$store/display" >/dev/null 2>&1 &
until [ -s "$store/display" ]; do kill -0 $! 2>/dev/null || fail "no virtual display"; sleep 0.1; done
display=:$(<"$store/display")
as_user=(chroot --userspec=tester:tester "$root" env -i PATH=/usr/bin:/bin HOME=/home/tester LC_ALL=C.UTF-8
    XDG_RUNTIME_DIR=/home/tester/run LUMIVAR_LOG_TO_CONSOLE=1 QT_QPA_PLATFORM=xcb DISPLAY="$display")

step "Building the package, and one of a later version"
version=$(sed -nE 's/^project\(lumivar VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
later=${version%.*}.$((${version##*.} + 1))
scripts/package.sh
scripts/package.sh --version "$later" --out "$store/later"
cp "$store"/lumivar_"$version"_*.deb "$root/tmp/now.deb"
cp "$store"/later/lumivar_"$later"_*.deb "$root/tmp/later.deb"

step "Installing its dependencies"
: >"$store/apt.log"
apt update
apt satisfy "$(dpkg-deb -f "$root/tmp/now.deb" Depends)"
in_system useradd --create-home tester
install -D build/dev/bin/strip-simulator "$root/opt/strip-simulator"
# All that is not the user's or the package system's own book-keeping.
files() {
    in_system find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /home -o -path /var/log \
        -o -path /var/lib/apt -o -path /var/cache/apt -o -path '/var/lib/dpkg/*-old' \) -prune \
        -o -type d -printf '%y %m %u:%g %p\n' -o -printf '%y %m %u:%g %s %p %l\n' |
        grep -vE ' /var/lib/dpkg/(status|lock.*|triggers/.*) $' | sort
}
files >"$store/files.before"

"${as_user[@]}" mkdir -p -m 700 /home/tester/run /home/tester/.config/Lumivar
"${as_user[@]}" sh -c 'cat >~/.config/Lumivar/controllers.json' <<'JSON'
{
    "LV0127:01020304": {
        "kindName": "Shelf", "brightness": 0.8, "enable": true, "installDirection": 0,
        "workMode": "id.effect.colorful", "subMode": "id.effect.colorful.ColorMap_3",
        "nbLeds": 120, "ledPerUnit": 1, "adjustableLength": false, "unavailable_modes": []
    }
}
JSON

# Starts the installed program beside a simulated strip.
start() {
    "${as_user[@]}" sh -c ': >~/frames'
    "${as_user[@]}" /opt/strip-simulator --ports /home/tester/ports.json --serial 01020304 --leds 120 --plain --check \
        --json /home/tester/frames --log /home/tester/program.log -- lumivar --auto_startup \
        >"$store/strip.log" 2>&1 </dev/null &
    simulator=$!
}
lit() { grep -cE '"colors":"[0-9a-f]*[1-9a-f]' "$home/frames" || true; }
# Waits for some more frames that are not black.
see_light() {
    local seen tries
    seen=$(lit)
    for ((tries = 0; tries < 600; ++tries)); do
        [ "$(lit)" -lt $((seen + 20)) ] || return 0
        kill -0 "$simulator" 2>/dev/null || break
        sleep 0.1
    done
    fail "no light on the strip"
}
# It looks at the strip as well: the light must have moved, and be off at the end.
stop() {
    kill "$simulator"
    wait "$simulator" || { cat "$store/strip.log" >&2; fail "the strip was not left as it should be"; }
    ! grep -E ' (ERROR|FATAL) ' "$home/program.log" >&2 || fail "the program misses something"
    [ -z "$(ls -A "$home/.config/Lumivar/dumps" 2>/dev/null)" ] || fail "the program crashed"
}
settings() { (cd "$home/.config/Lumivar" && find . -name '*.json' -exec sha256sum {} + | sort -k 2); }
# The program writes a second after a change.
settled() {
    local now=none before=""
    until [ "$now" = "$before" ]; do before=$now; sleep 1.5; now=$(settings); done
    echo "$now"
}
version_is() {
    "${as_user[@]}" lumivar --version 2>/dev/null | grep -qF "Lumivar $1." || fail "this is not version $1"
}

step "Installing version $version"
apt install /tmp/now.deb
for file in $(in_system find /usr/lib/lumivar/lib /usr/lib/lumivar/bin -maxdepth 1 -type f); do
    ! in_system ldd "$file" 2>/dev/null | grep "not found" || fail "$file lacks a library"
done
version_is "$version"
start
see_light

step "Upgrading it to $later while it runs"
kept=$(settled)
apt install /tmp/later.deb
see_light
[ "$(settled)" = "$kept" ] || fail "the upgrade changed the user's settings"
"${as_user[@]}" timeout 20 lumivar >/dev/null 2>&1 || fail "a second start of the new version ends badly"
see_light
stop

step "Starting version $later"
version_is "$later"
start
see_light
stop
grep -q '"Shelf"' "$home/.config/Lumivar/controllers.json" || fail "the user's name of the device is lost"

step "Purging it"
apt purge lumivar
files | diff "$store/files.before" - || fail "these files stay behind, or are gone"
[ -s "$home/.config/Lumivar/controllers.json" ] || fail "the user's settings are gone"
echo "The package installs, lights, upgrades and goes without a trace."
