#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fuzzes one of the readers of files with libFuzzer, beginning with its seeds and with what earlier runs tried:
#   fuzz.sh TARGET MINUTES
# Ends with 0 when the time is over and nothing was found, with 2 when the arguments are wrong.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../cmake/commands.sh"

fuzz=$root/tests/fuzz
targets=("$fuzz"/corpus/*/)
targets=("${targets[@]%/}")
targets=("${targets[@]##*/}")

usage()
{
    echo "$1" >&2
    echo "usage: ./test --fuzz TARGET MINUTES" >&2
    echo "The targets: ${targets[*]}. The minutes: a whole number from 1 on." >&2
    exit 2
}

# How to go on with the files in the folder $found, when there are any.
explain_finds()
{
    local find
    for find in "$found"/{crash,leak,timeout,oom}-*; do
        [[ -e $find ]] || continue
        echo
        echo "Found: $find"
        echo "To see it again:   $program $find"
        echo "To make it smaller: $program -minimize_crash=1 -max_total_time=60 -artifact_prefix=$found/ $find"
        echo "To keep it as a seed, which ./test -R fuzz_$target runs: copy it to $seeds/"
    done
}

(($# == 2)) || usage "A target and a number of minutes are needed."
target=$1
minutes=$2
[[ $target =~ ^[a-z]+$ && -d $fuzz/corpus/$target ]] || usage "There is no fuzz target \"$target\"."
[[ $minutes =~ ^[1-9][0-9]{0,5}$ ]] || usage "\"$minutes\" is no number of minutes."

install_packages "${build_packages[@]}" "${fuzz_packages[@]}"
build fuzz "fuzz_$target"

program=$root/build/fuzz/bin/fuzz_$target
seeds=$fuzz/corpus/$target
tried=$root/build/fuzz/corpus/$target
found=$(mktemp -d "$root/build/fuzz/found-$target-XXXXXX")
mkdir -p "$tried"
options=(-max_total_time=$((minutes * 60)) -timeout=20 -print_final_stats=1 -artifact_prefix="$found/")
if [[ -e $fuzz/$target.dict ]]; then
    options+=(-dict="$fuzz/$target.dict")
fi
# What the target writes itself: in memory where that is possible, and gone afterwards.
export TMPDIR
TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
trap 'rm -rf "$TMPDIR"; rmdir --ignore-fail-on-non-empty "$found"' EXIT

status=0
QT_QPA_PLATFORM=offscreen "$program" "${options[@]}" "$tried" "$seeds" || status=$?
explain_finds
exit "$status"
