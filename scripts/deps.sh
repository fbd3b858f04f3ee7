#!/usr/bin/env bash
# The one list of packages. Usage: scripts/deps.sh GROUP...   with the groups build, run, stage, test, package, format,
# lint, bench, fuzz, windows, windows-test.
# Installs what is missing; where it cannot, it names what is missing and fails.
set -u

declare -A packages
packages[build]="g++ cmake ninja-build ccache pkg-config git
    qtbase5-dev qttools5-dev-tools libqt5serialport5-dev
    libopencv-core-dev libopencv-imgproc-dev liblog4cplus-dev libjsoncpp-dev libpulse-dev libpipewire-0.3-dev libzip-dev libsodium-dev
    libxcb1-dev libxcb-shm0-dev libxcb-render0-dev libxcb-randr0-dev libxcb-damage0-dev
    libqt5x11extras5-dev libxcb-xkb-dev libxkbcommon-dev libxkbcommon-x11-dev"
packages[run]="fonts-liberation fonts-dejavu-core fonts-noto-cjk xvfb xauth pulseaudio qtwayland5"
packages[stage]="dbus-daemon pipewire pipewire-bin wireplumber" # the stand-in for a Wayland desktop
packages[test]="${packages[stage]} xvfb x11-utils x11-xserver-utils openbox trayer xdotool x11-xkb-utils openssl fonts-liberation fonts-dejavu-core fonts-noto-cjk python3
    pulseaudio pulseaudio-utils
    sway grim qtwayland5
    g++-mingw-w64-x86-64-posix"
packages[package]="debhelper lintian appstream desktop-file-utils debootstrap"
packages[format]="clang-format-14"
packages[lint]="clang-tidy"
packages[fuzz]="clang"
packages[windows]="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev g++ make cmake ninja-build ccache pkg-config git perl python3
    dpkg-dev autoconf automake libtool ca-certificates qtbase5-dev qttools5-dev-tools nsis"
packages[windows-test]="wine wine64 xvfb openbox xdotool x11-utils imagemagick python3 fonts-liberation fonts-noto-cjk" # to see it run
packages[bench]="libbenchmark-dev libxcb-xtest0-dev xvfb python3 pulseaudio pulseaudio-utils"

wanted=()
for group in "$@"; do
    [ -n "${packages[$group]:-}" ] || { echo "deps.sh: no group '$group'" >&2; exit 2; }
    # shellcheck disable=SC2206  # the list is split on purpose
    wanted+=(${packages[$group]})
done

if ! command -v dpkg-query >/dev/null; then
    echo "This is not a Debian or Ubuntu system. Install what corresponds to these packages:" >&2
    printf '  %s\n' "${wanted[@]}" >&2
    exit 1
fi

missing_packages() {
    local have
    have=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null |
        awk '$2 == "installed" { print $1 }')
    printf '%s\n' "${wanted[@]}" | sort -u | grep -vxF -f <(echo "$have")
}

missing=$(missing_packages)
[ -z "$missing" ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
    # Without a terminal nobody can type a password, so it must work without one.
    [ -t 0 ] || sudo="sudo -n"
    command -v sudo >/dev/null || sudo="false"
fi

echo "Installing: $(echo "$missing" | tr '\n' ' ')"
# shellcheck disable=SC2086  # word splitting is wanted
{
    # Lists that cannot be renewed, be it for one broken source, may still hold what is wanted. A fresh system
    # installs its updates right after the start: wait for the lock.
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        -o DPkg::Lock::Timeout=120 $missing
} </dev/null >/dev/null || true

missing=$(missing_packages)
if [ -n "$missing" ]; then
    echo "These packages are missing and could not be installed (no rights, no network, or no such package):" >&2
    echo "$missing" | sed 's/^/  /' >&2
    exit 1
fi
