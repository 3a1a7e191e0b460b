#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# arrows.sh ROOT: holds the includes of the sources to the table "Rooms" of docs/architecture.md, which says what each
# room may know, and to having no circles: no two classes may know each other, directly or through others.
set -euo pipefail
cd "$1"

units=$(mktemp)
trap 'rm -f "$units"' EXIT
mapfile -t sources < <(find benchmarks chipview dialogs engine examples filter generator graphics host importer placement planning \
    platform resources -name '*.h' -o -name '*.cpp' | sort)

awk -v units="$units" '
    # A room is the folder or the file pattern that fits a name best.
    function roomOf(name,    room, best, length_)
    {
        length_ = -1
        for (room in pattern)
            if (name ~ pattern[room] && weight[room] > length_) {
                best = room
                length_ = weight[room]
            }
        return best
    }
    # x.h, x.cpp and x_part.cpp are one.
    function unitOf(name)
    {
        sub(/\.(h|cpp)$/, "", name)
        sub(/_[a-z]+$/, "", name)
        return name
    }
    FILENAME == "docs/architecture.md" {
        if (/^## /)
            isTable = /^## Rooms/
        if (isTable && /^\| `/) {
            split($0, cells, "|")
            files = cells[2]
            gsub(/[` ]/, "", files)
            weight[files] = length(files)
            regexp = files
            gsub(/\./, "\\.", regexp)
            gsub(/\*/, "[a-z]*", regexp)
            pattern[files] = "^" regexp
            gsub(/[`,]/, " ", cells[3])
            knows[files] = " " files " " cells[3] " "
        }
        next
    }
    /^#include "/ {
        split($0, parts, "\"")
        name = parts[2]
        from = roomOf(FILENAME)
        to = roomOf(name)
        if (from == "") {
            print FILENAME ": is in no room of docs/architecture.md"
            exit status = 1
        }
        if (to != "" && index(knows[from], " " to " ") == 0) {
            print FILENAME ":" FNR ": includes " name ", but " from " may not know " to
            status = 1
        }
        if (unitOf(FILENAME) != unitOf(name))
            print unitOf(FILENAME), unitOf(name) > units
    }
    END { exit status }
' docs/architecture.md "${sources[@]}"

tsort "$units" > /dev/null
