# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the scripts of this folder have in common.

export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

fail()
{
    echo "FAIL: $*" >&2
    exit 1
}

# equal WHAT ACTUAL EXPECTED
equal()
{
    [[ $2 == "$3" ]] || fail "$1: $(diff <(echo "$3") <(echo "$2"))"
}

# contains WHAT TEXT PART
contains()
{
    [[ $2 == *"$3"* ]] || fail "$1: there is no '$3' in '$2'"
}

# needs TOOL: ends the test as skipped where there is no such tool.
needs()
{
    if ! command -v "$1" >/dev/null; then
        echo "SKIP: there is no $1 on this machine"
        exit 77
    fi
}
