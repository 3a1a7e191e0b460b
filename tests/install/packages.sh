#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The Debian packages: what is in which, that the program runs from them, and that lintian finds no error. The
# environment says ZEL_BUILD, ZEL_SUFFIX and ZEL_VERSION.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
needs dpkg-deb
needs dpkg-shlibdeps

work=$ZEL_BUILD/tests/packages
runtime=libzelchipgui${ZEL_SUFFIX:+$ZEL_SUFFIX-}${ZEL_VERSION%.*}
development=libzelchipgui$ZEL_SUFFIX-dev
program=zelchip$ZEL_SUFFIX

# files_of PACKAGE: without the folders.
files_of()
{
    dpkg-deb --fsys-tarfile "$work/$1"_*.deb | tar t | grep -v '/$'
}

# has PACKAGE PATTERN...: each pattern matches a file of the package, the whole name.
has()
{
    local package=$1 pattern
    shift
    for pattern in "$@"; do
        grep -qxE "./usr/$pattern" <<<"$(files_of "$package")" || fail "$package has no $pattern"
    done
}

rm -rf "$work"
mkdir -p "$work"
(cd "$ZEL_BUILD" && cpack -G DEB -B "$work" >/dev/null)
equal "the packages" "$(cd "$work" && printf '%s\n' *.deb | sed 's/_.*//' | sort)" \
    "$(printf '%s\n' "$runtime" "$development" "$program" | sort)"

lib="lib(/[a-z0-9_-]+-linux-[a-z]+)?"
s=$ZEL_SUFFIX
has "$runtime" "$lib/libzelchipgui$s.so.$ZEL_VERSION" "$lib/libzelplatform$s.so.$ZEL_VERSION"
has "$development" "$lib/libzelchipgui$s.so" "$lib/libzelengine$s.a" "$lib/pkgconfig/zelchipgui$s.pc" \
    "$lib/cmake/ZelChipGui$s/ZelChipGui${s}Config.cmake" "include/zelchipgui$s/chipview/zelchipgui.h"
has "$program" "bin/$program" "share/man/man1/$program.1.gz" "share/$program/sample/project.json" \
    "share/applications/org.mirn.$program.desktop" "share/metainfo/org.mirn.$program.metainfo.xml"

# The packages of the two Qts can be installed together: no file of the one is a file of the other.
for package in "$runtime" "$development" "$program"; do
    if [[ -n $ZEL_SUFFIX ]]; then
        equal "files of $package that may clash" "$(files_of "$package" | grep -v -- "$ZEL_SUFFIX" || true)" ""
    else
        equal "files of $package that may clash" "$(files_of "$package" | grep -e -qt5 || true)" ""
    fi
    dpkg-deb -x "$work/$package"_*.deb "$work/root"
done
equal "the version of the unpacked program" \
    "$(LD_LIBRARY_PATH=$(echo "$work"/root/usr/lib/*zelchipgui*.so | xargs -n1 dirname) "$work/root/usr/bin/$program" --version)" \
    "zelchip $ZEL_VERSION"

needs lintian
lintian --allow-root --fail-on error "$work"/*.deb
