#!/usr/bin/env bash
# Installs the Windows program under Wine on a virtual display and uses it, with simulated strips behind COM ports;
# then runs the unit tests that are built for Windows, and measures the program beside the Linux build. Each step is
# told as passed, failed or not run; the exit code is 0 without failures.
# Usage: scripts/windows/test.sh [--as-built] [program | units | numbers]...   --as-built: builds nothing
# Pictures are left in build/windows/pictures, logs in build/windows/test-logs.
set -eu
cd "$(dirname "$0")/../.."

as_built=""
[ "${1:-}" = --as-built ] && { as_built=yes; shift; }
if [ -z "$as_built" ]; then
    scripts/deps.sh build windows windows-test
    scripts/windows/build.sh --tests
    scripts/windows/installer.sh
    scripts/build.sh release lumivar CrashReporter strip-simulator
fi
export LUMIVAR_WINDOWS_CACHE=${LUMIVAR_WINDOWS_CACHE:-$HOME/.cache/lumivar-windows}
PYTHONDONTWRITEBYTECODE=1 exec python3 scripts/windows/test.py "$PWD" "$@"
