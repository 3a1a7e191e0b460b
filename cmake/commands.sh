# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Functions for run, test and bench, which source this file. It sets `root` to the source tree. All its messages go to
# stderr, so that stdout is the program's own.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/cmake/packages.sh"

# is_configured DIR PRESET: returns true if the build directory belongs to this tree and is newer than the presets.
is_configured()
{
    [[ -f $1/build.ninja && ! $root/CMakePresets.json -nt $1/build.ninja ]] \
        && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$1/CMakeCache.txt"
}

# quietly COMMAND...: shows the output of the command only if it fails.
quietly()
{
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    if ((status != 0)); then
        cat "$log" >&2
    fi
    rm -f "$log"
    return "$status"
}

# build PRESET TARGET: brings the target up to date in build/PRESET. Shows the progress until this has succeeded once.
build()
{
    local directory=$root/build/$1 options=()
    local stamp=$directory/.built-$2
    if ! is_configured "$directory"; then
        if command -v ccache >/dev/null; then
            options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        fi
        echo "Configuring $directory ..." >&2
        # A build directory that was copied from elsewhere refers to other sources, so it is configured anew.
        (cd "$root" && quietly cmake --fresh --preset "$1" "${options[@]}")
    fi
    if [[ -e $stamp ]]; then
        quietly cmake --build "$directory" --target "$2"
    else
        echo "Building; the first time takes some minutes ..." >&2
        cmake --build "$directory" --target "$2" >&2
        touch "$stamp"
    fi
}
