# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# The Debian packages that this project needs, and the way they come onto the machine. Sourced by cmake/commands.sh.

# To build and run, and for the tests.
build_packages=(
    g++
    cmake
    ninja-build
    pkg-config
    qt6-base-dev
    libgl-dev
    libexpat1-dev
    zlib1g-dev
    tcl-dev
    fonts-dejavu-core # the offscreen platform brings no fonts of its own
)

# On top of these, for ./test: a screen of its own, with a window manager and a hand on the mouse.
test_packages=(xvfb openbox xdotool)

# What looks at the packages that are made; where it is missing, ./test leaves that out and says so.
packaging_packages=(dpkg-dev lintian desktop-file-utils appstream)

# On top of these, for ./test --qt5.
qt5_packages=(qtbase5-dev)

# On top of these, for ./test --fuzz: libFuzzer and the sanitizers are in clang's runtime.
fuzz_packages=(clang libclang-rt-dev)

# On top of these, for ./bench.
bench_packages=(libbenchmark-dev)

# Prints those of the named packages that are not installed.
missing_packages()
{
    local package
    for package in "$@"; do
        if [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            echo "$package"
        fi
    done
}

# Installs those of the named packages that are not installed; touches nothing when all are there.
install_packages()
{
    if ! command -v dpkg-query >/dev/null; then
        return # no Debian: what is missing shows in the configuration
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        return
    fi
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing: ${missing[*]}" >&2
            echo "Install them as root: apt-get install --no-install-recommends ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]} ..." >&2
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300)
    quietly "${apt[@]}" update
    quietly "${apt[@]}" install -y --no-install-recommends "${missing[@]}"
}
