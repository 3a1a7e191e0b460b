# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# The Debian packages that this project needs, and functions to install them. cmake/commands.sh sources this file.

# For building and running, and for the tests.
build_packages=(
    g++
    cmake
    ninja-build
    pkg-config
    qt6-base-dev
    libgl-dev
    libexpat1-dev
    zlib1g-dev
    libxxhash-dev
    libcsv-dev
    tcl-dev
    fonts-dejavu-core # the offscreen platform has no fonts of its own
)

# In addition for ./test: a virtual screen with a window manager and a simulated mouse.
test_packages=(xvfb openbox xdotool)

# Tools that check the generated packages. ./test does not install them; without them it skips these tests and says so.
packaging_packages=(dpkg-dev lintian desktop-file-utils appstream)

# In addition for ./test --qt5.
qt5_packages=(qtbase5-dev)

# In addition for ./test --fuzz: clang's runtime contains libFuzzer and the sanitizers.
fuzz_packages=(clang libclang-rt-dev)

# In addition for ./bench.
bench_packages=(libbenchmark-dev)

# In addition for ./bench --screen: a virtual screen, and the libraries that drive and watch it.
screen_packages=(xvfb openbox xdotool libx11-dev libxtst-dev libxdamage-dev)

# Prints those of the given packages that are not installed.
missing_packages()
{
    local package
    for package in "$@"; do
        if [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            echo "$package"
        fi
    done
}

# Installs those of the given packages that are not installed; does nothing if all are.
install_packages()
{
    if ! command -v dpkg-query >/dev/null; then
        return # not Debian: CMake reports what is missing
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
