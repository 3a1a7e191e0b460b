#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What the installed component is for its users, one step per test:
#   installed.sh install       into an empty prefix, which is then moved: everything below uses the moved one
#   installed.sh headers       only below their folder, complete, as C++17 and as C++20
#   installed.sh cmake         the examples, built outside the tree with the CMake package, and run
#   installed.sh pkgconfig     the examples, built by one compiler call each, one of them as C++20, and run
#   installed.sh document      the host of docs/embedding.md, from nothing but what stands there
#   installed.sh program       zelchip, its manual, and the user's copy of the sample
#   installed.sh metadata      what desktops read; needs desktop-file-validate and appstreamcli
#   installed.sh source        the source archive, which configures where there is no git
# The environment says ZEL_SOURCE, ZEL_BUILD, ZEL_SUFFIX, ZEL_LIBDIR, ZEL_VERSION, CXX and CXXFLAGS.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

work=$ZEL_BUILD/tests/installed
prefix=$work/moved
libraries=$prefix/$ZEL_LIBDIR
package=ZelChipGui$ZEL_SUFFIX
program=zelchip$ZEL_SUFFIX
export PKG_CONFIG_PATH=$libraries/pkgconfig

check_install()
{
    rm -rf "$work"
    cmake --install "$ZEL_BUILD" --prefix "$work/first" >/dev/null
    mv "$work/first" "$prefix"
    local library soname
    for library in zelplatform zelchipgui; do
        soname=$(readelf -d "$libraries/lib$library$ZEL_SUFFIX.so" | sed -n 's/.*soname: \[\(.*\)\]/\1/p')
        equal "$library's SONAME" "$soname" "lib$library$ZEL_SUFFIX.so.${ZEL_VERSION%.*}"
        [[ -f $libraries/lib$library$ZEL_SUFFIX.so.$ZEL_VERSION ]] || fail "the library's file has no version"
    done
    # What is read by other programs may name neither where it was built nor where it was first installed.
    equal "files that name a folder of this machine" \
        "$(grep -rIl -e "$ZEL_SOURCE" -e "$ZEL_BUILD" -e "$work/first" "$prefix" || true)" ""
}

# compile NAME FLAGS...: the text on stdin, with what a host's compiler call has.
compile()
{
    local name=$1
    shift
    local flags
    read -ra flags <<<"$CXXFLAGS $(pkg-config --cflags "zelchipgui$ZEL_SUFFIX" "zelengine$ZEL_SUFFIX")"
    "$CXX" -x c++ -fsyntax-only -fPIC -Wall -Wextra -Werror "${flags[@]}" "$@" - || fail "$name does not compile"
}

check_headers()
{
    equal "folders of headers" "$(ls "$prefix/include")" "zelchipgui$ZEL_SUFFIX"
    cd "$prefix/include/zelchipgui$ZEL_SUFFIX"
    local headers header
    mapfile -t headers < <(find . -name '*.h' -printf '%P\n' | sort)
    # Every source includes its own header first, so that its building is the proof for the others.
    for header in "${headers[@]}"; do
        if [[ -z $(find "$ZEL_SOURCE"/*/ -path "$ZEL_BUILD" -prune -o -name "$(basename "$header" .h).cpp" -print -quit) ]]; then
            compile "$header alone" -std=c++17 <<<"#include \"$header\""
        fi
    done
    printf '#include "%s"\n' "${headers[@]}" | compile "all headers as C++20" -std=c++20 -Wpedantic
}

# run_examples FOLDER: the two programs in the folder, each of which places something and ends.
run_examples()
{
    contains "what minimal says" "$("$1/minimal" "$ZEL_SOURCE/examples/minimal" --once)" "-id 2: done"
    rm -rf "$1/project"
    cp -r "$prefix/share/$program/sample" "$1/project"
    "$1/embedded" "$1/project" --once "$1/embedded.png"
    [[ -s $1/embedded.png ]] || fail "embedded wrote no picture"
}

check_cmake()
{
    local example built=$work/cmake
    mkdir -p "$built"
    for example in minimal embedded; do
        cmake -S "$ZEL_SOURCE/examples/$example" -B "$built/build-$example" \
            -DCMAKE_PREFIX_PATH="$prefix" -DCHIPVIEW="$package" -DCMAKE_RUNTIME_OUTPUT_DIRECTORY="$built" >/dev/null
        cmake --build "$built/build-$example" >/dev/null
    done
    run_examples "$built"
    if cmake -S "$ZEL_SOURCE/tests/install/newerversion" -B "$built/build-newer" \
        -DCMAKE_PREFIX_PATH="$prefix" -DCHIPVIEW="$package" >"$built/newer.log" 2>&1; then
        fail "CMake takes version $ZEL_VERSION for a newer one"
    fi
    contains "why CMake refuses it" "$(<"$built/newer.log")" "version: $ZEL_VERSION"
}

# build_example NAME STANDARD
build_example()
{
    local flags
    read -ra flags <<<"$CXXFLAGS $(pkg-config --cflags --libs "zelengine$ZEL_SUFFIX" "zelchipgui$ZEL_SUFFIX")"
    "$CXX" "-std=$2" -fPIC "$ZEL_SOURCE/examples/$1"/*.cpp "${flags[@]}" -Wl,-rpath,"$libraries" -o "$built/$1"
}

check_pkgconfig()
{
    local built=$work/pkgconfig
    mkdir -p "$built"
    equal "the version" "$(pkg-config --modversion "zelchipgui$ZEL_SUFFIX")" "$ZEL_VERSION"
    build_example minimal c++17
    build_example embedded c++20
    run_examples "$built"
}

# The document's examples, as its reader would put them into files, built both ways; the host that CMake made runs.
check_document()
{
    local built=$work/document language file flags host
    rm -rf "$built"
    mkdir -p "$built"
    while read -r language file; do
        awk -v language="$language" -f "$ZEL_SOURCE/tests/docs/examples.awk" "$ZEL_SOURCE/docs/embedding.md" >"$built/$file"
        [[ -s $built/$file ]] || fail "the document has no $file"
    done <<<$'cmake CMakeLists.txt\ncpp host.cpp\nxml chip.svg'
    sed -i "s/find_package(ZelChipGui /find_package($package /" "$built/CMakeLists.txt"

    cd "$built"
    cmake -B build -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
    cmake --build build >/dev/null
    read -ra flags <<<"$CXXFLAGS $(pkg-config --cflags --libs "zelchipgui$ZEL_SUFFIX")"
    "$CXX" -std=c++17 -fPIC host.cpp "${flags[@]}" -Wl,-rpath,"$libraries" -o host
    timeout 60 ./build/host &
    host=$!
    # Written by the view when it has read the drawing.
    until [[ -s zelsvg.temp ]]; do
        kill -0 "$host" 2>/dev/null || fail "the host ends before it shows its drawing"
        sleep 0.05
    done
    kill "$host"
}

# The options of a text, one a line.
options_in()
{
    grep -oE -- '(^|[ ,])--?[a-z]+( [A-Z][A-Za-z.]+)?' | sed 's/^[ ,]*//' | sort -u
}

check_program()
{
    local zelchip=$prefix/bin/$program
    equal "the version" "$("$zelchip" --version)" "zelchip $ZEL_VERSION"
    # Options begin their lines; elsewhere both texts only mention them.
    equal "the manual's options" \
        "$(sed -n '/^\.SH OPTIONS/,/^\.SH EXIT/{/^\.B/{s/^\.[BRI]* *//;s/[\"]//g;s/  */ /g;p}}' \
            "$prefix/share/man/man1/$program.1" | options_in)" \
        "$("$zelchip" --help | sed -n 's/^  \(-.*\)/\1/p' | sed 's/   .*//' | options_in)"

    # The installed sample is not worked on; the user's copy is, and keeps what was done.
    export HOME=$work/home
    unset XDG_DATA_HOME
    rm -rf "$HOME"
    mkdir "$HOME"
    cat >"$work/place.tcl" <<'TCL'
set resource [lindex [zel_resource list -unplaced] 0]
zel_resource place -rsc $resource -id [lindex [zel_resource sites -rsc $resource] 0]
puts $resource
TCL
    local placed
    placed=$("$zelchip" --batch "$work/place.tcl" 2>/dev/null)
    echo 'puts [zel_resource list -unplaced]' >"$work/list.tcl"
    if [[ " $("$zelchip" --batch "$work/list.tcl" 2>/dev/null) " == *" $placed "* ]]; then
        fail "$placed was placed, and is not the next time"
    fi
    [[ ! -e $prefix/share/$program/sample/impl1 ]] || fail "the program wrote into the prefix"
}

check_metadata()
{
    needs desktop-file-validate
    needs appstreamcli
    local name=org.mirn.$program
    desktop-file-validate "$prefix/share/applications/$name.desktop"
    appstreamcli validate --no-net "$prefix/share/metainfo/$name.metainfo.xml"
    equal "the icon's name" "$(sed -n 's/^Icon=//p' "$prefix/share/applications/$name.desktop")" "$name"
    [[ -f $prefix/share/icons/hicolor/scalable/apps/$name.svg ]] || fail "there is no icon of that name"
    equal "the program's name" "$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$prefix/share/applications/$name.desktop")" "$program"
}

check_source()
{
    local unpacked
    rm -rf "$work/source"
    mkdir -p "$work/source"
    (cd "$work/source" && cpack --config "$ZEL_BUILD/CPackSourceConfig.cmake" -G TGZ >/dev/null && tar xzf ./*.tar.gz)
    unpacked=$(echo "$work"/source/zelchipgui-*/)
    # Run from elsewhere than the tree, so that no .git lies above.
    if [[ -d $ZEL_SOURCE/.git ]]; then
        equal "tracked files that the archive lacks" \
            "$(cd "$ZEL_SOURCE" && git ls-files | while read -r file; do [[ -e $unpacked/$file ]] || echo "$file"; done)" ""
    fi
    equal "what the archive has beside the sources" \
        "$(cd "$unpacked" && find . \( -name .git -o -name build -o -name '*.o' \) -print)" ""
    cmake -S "$unpacked" -B "$work/source/build" -DZEL_QT_MAJOR="${ZEL_QT_MAJOR:-}" -DGIT_EXECUTABLE=/nowhere >/dev/null
}

"check_$1"
