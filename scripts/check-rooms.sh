#!/usr/bin/env bash
# Fails when a source includes a header of a room above its own, or lies loose in src/ beside main.cpp.
set -eu
cd "$(dirname "$0")/../src"
# From the top down: a room may include what stands behind it.
rooms=(app system ui hotkey online effects widgets controllers support viewModels resources)

loose=$(find . -maxdepth 1 -type f ! -name main.cpp ! -name CMakeLists.txt)
[ -z "$loose" ] || { echo "These belong into a room:" $loose; exit 1; }

if grep -rn --include='*.cpp' --include='*.h' '^#include "\.\./' .; then echo "Includes past its room"; exit 1; fi

grep -rnE --include='*.cpp' --include='*.h' '^#include "[A-Za-z]+/' . | awk -v rooms="${rooms[*]}" '
    BEGIN { for (n = split(rooms, name, " "); n > 0; --n) height[name[n]] = n }
    {
        split($0, part, ":")
        split(part[1], path, "/")
        from = path[2]
        match($0, /"[A-Za-z]+\//)
        to = substr($0, RSTART + 1, RLENGTH - 2)
        if (from == "main.cpp")
            next
        if (!(from in height) || !(to in height)) {
            if (to in height || from in height) { print "No such room: " $0; bad = 1 }
        } else if (height[to] < height[from]) {
            print "Includes a room above its own: " $0
            bad = 1
        }
        ++seen
    }
    END { if (!seen) { print "No include found"; bad = 1 } exit bad }'
