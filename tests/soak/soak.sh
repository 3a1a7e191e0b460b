#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Random work and random trouble for as long as one likes; called by ./test --soak [MINUTES], ten without a number:
# a tenth of the time random commands, half of it kills, full disks and two programs, the rest gestures in the window,
# once held to their memory and once under the sanitizers. ZEL_SOAK_SEED says where the random numbers begin.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../cmake/commands.sh"

minutes=${1:-10}
if (($# > 1)) || ! [[ $minutes =~ ^[1-9][0-9]{0,4}$ ]]; then
    echo "usage: ./test --soak [MINUTES], a whole number from 1 to 99999, not '$*'" >&2
    exit 2
fi

# share PERCENT: that part of the time, in minutes.
share()
{
    awk -v all="$minutes" -v percent="$1" 'BEGIN { printf "%.2f", all * percent / 100 }'
}

# run PRESET TEST MINUTES: says what the campaign found; false when that was a fault.
run()
{
    echo "$2 ($1), $3 minutes:"
    ZEL_SOAK_MINUTES=$3 "$root/build/$1/tests/$2" 2>&1 | sed -E '/^(PASS|Config|\*+|QStandardPaths)/d'
}

install_packages "${build_packages[@]}" "${test_packages[@]}"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
export LSAN_OPTIONS=suppressions=$root/tests/support/lsan.supp:print_suppressions=0
build dev all
build asan tst_gestures
status=0
# About five thousand sequences of commands take six seconds.
ZEL_REPLAY_SEQUENCES=$((minutes * 2500)) run dev tst_replay "$(share 10)" || status=1
run dev tst_kills "$(share 50)" || status=1
run dev tst_gestures "$(share 20)" || status=1
run asan tst_gestures "$(share 20)" || status=1
exit "$status"
