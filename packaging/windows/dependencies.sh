#!/usr/bin/env bash
# Builds the libraries that the project needs on Windows x86-64, once, into a cache folder outside of the checkout.
#
# usage: dependencies.sh              builds what the cache lacks
#        dependencies.sh --pin NAME VERSION
#                                     writes another version of a source package into the list beside this file
#        dependencies.sh --where      prints the cache folder
#        dependencies.sh --clean      forgets the cache
#
# MCS_WINDOWS_CACHE names the folder; without it, it is multichannelserver-windows in the user's cache.
# MCS_DEBIAN_URI and MCS_DEBIAN_SECURITY_URI name the mirrors, MCS_JOBS how many compilers run at once.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
list=$here/sources
cache=${MCS_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/multichannelserver-windows}
debian=${MCS_DEBIAN_URI:-http://deb.debian.org/debian}
security=${MCS_DEBIAN_SECURITY_URI:-http://deb.debian.org/debian-security}
jobs=${MCS_JOBS:-$(nproc)}
triple=x86_64-w64-mingw32

say() {
    echo "windows: $*" >&2
}

fail() {
    say "$*"
    exit 1
}

# apt, with lists of its own: nothing of the machine's is read or written.
private_apt() {
    local tool=$1
    shift
    "$tool" -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$cache/apt/parts" \
        -o Dir::State::Lists="$cache/apt/lists" -o Dir::Cache="$cache/apt/cache" \
        -o APT::Sandbox::User="$(id -un)" "$@"
}

# refresh_lists: once per run, and only if something has to be fetched.
are_lists_fresh=
refresh_lists() {
    [ -z "$are_lists_fresh" ] || return 0
    mkdir -p "$cache/apt/parts" "$cache/apt/lists/partial" "$cache/apt/cache/archives/partial"
    local key=/usr/share/keyrings/debian-archive-keyring.gpg
    {
        printf 'Types: deb-src\nURIs: %s\nSuites: bookworm bookworm-updates\nComponents: main\nSigned-By: %s\n\n' \
            "$debian" "$key"
        printf 'Types: deb-src\nURIs: %s\nSuites: bookworm-security\nComponents: main\nSigned-By: %s\n' \
            "$security" "$key"
    } >"$cache/apt/parts/debian.sources"
    private_apt apt-get update -qq
    are_lists_fresh=yes
}

# field NAME NUMBER: of the package's line in the list.
field() {
    awk -v name="$1" -v number="$2" '$1 == name { print $number }' "$list"
}

# description NAME VERSION: the .dsc file, whose name leaves the epoch out.
description() {
    echo "$cache/archives/$1_${2#*:}.dsc"
}

# download NAME VERSION: into the cache, or one line on what there is instead.
download() {
    local name=$1 version=$2 there
    refresh_lists
    mkdir -p "$cache/archives"
    (cd "$cache/archives" && private_apt apt-get source --download-only -qq "$name=$version" >/dev/null 2>&1) && return
    there=$(private_apt apt-cache showsrc "$name" 2>/dev/null | sed -n 's/^Version: //p' | sort -Vr | paste -sd ' ')
    fail "the mirror has no $name $version; it lists ${there:-none}: pin one with" \
        "packaging/windows/dependencies.sh --pin $name VERSION"
}

hash_of() {
    sha256sum "$1" | cut -d ' ' -f 1
}

# unpack NAME FOLDER: the sources as the list pins them, with Debian's patches.
unpack() {
    local name=$1 folder=$2 version file
    version=$(field "$name" 2)
    file=$(description "$name" "$version")
    [ -e "$file" ] || download "$name" "$version"
    [ "$(hash_of "$file")" = "$(field "$name" 3)" ] || fail "$file is not the one that was pinned: $(hash_of "$file")"
    rm -rf "$folder"
    mkdir -p "$(dirname "$folder")"
    dpkg-source -x "$file" "$folder" >/dev/null 2>&1 && return
    # The .dsc is right, so one of its files is not: fetched anew, checked anew.
    download "$name" "$version"
    dpkg-source -x "$file" "$folder" >/dev/null || fail "$name $version does not unpack"
}

pin() {
    local name=$1 version=$2
    [ -n "$(field "$name" 1)" ] || fail "$name is not in $list"
    download "$name" "$version"
    local hash
    hash=$(hash_of "$(description "$name" "$version")")
    sed -i -E "s|^$name .*|$name $version $hash|" "$list"
    say "$name is pinned to $version"
}

# The builds: build_<what> SOURCE PREFIX, started in an empty folder.

# The folders that are built in are compiled into the library, and whoever can write to such a path on somebody's
# machine could bring code of his own: they name a place that only administrators write to, and no file is read unasked.
build_openssl() {
    local source=$1 prefix=$2
    "$source/Configure" mingw64 --cross-compile-prefix=$triple- --prefix="C:/Program Files/Common Files/SSL" \
        --openssldir=. --libdir=lib shared no-tests no-autoload-config
    make -j"$jobs" build_libs
    mkdir -p "$prefix/bin" "$prefix/lib" "$prefix/include/openssl"
    cp lib{crypto,ssl}-3-x64.dll "$prefix/bin"
    $triple-strip --strip-unneeded "$prefix"/bin/*.dll
    cp lib{crypto,ssl}.dll.a "$prefix/lib"
    cp "$source"/include/openssl/*.h include/openssl/*.h "$prefix/include/openssl"
    cp "$source/LICENSE.txt" "$prefix/LICENSE"
}

build_googletest() {
    local source=$1 prefix=$2
    cmake -S "$source" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_SYSTEM_NAME=Windows \
        -DCMAKE_C_COMPILER=$triple-gcc -DCMAKE_CXX_COMPILER=$triple-g++ -DCMAKE_INSTALL_PREFIX="$prefix"
    ninja -j"$jobs" install
    cp "$source/LICENSE" "$prefix/LICENSE"
}

build_libmodbus() {
    local source=$1 prefix=$2
    (cd "$source" && autoreconf -fi)
    "$source/configure" --host=$triple --enable-shared --disable-static --disable-tests --prefix="$prefix"
    make -j"$jobs" install
    $triple-strip --strip-unneeded "$prefix"/bin/*.dll
    cp "$source/COPYING.LESSER" "$prefix/LICENSE"
}

# TLS by OpenSSL, as on Linux: one behaviour, and one set of certificate files, on all systems. Little optimised, which
# takes a third less time: nothing that counts here is spent in Qt's own code.
build_qt() {
    local source=$1 prefix=$2 openssl=$cache/openssl
    sed -i -E '/^QMAKE_CFLAGS_OPTIMIZE(_FULL)? /s/-O[23]/-O1/' "$source/mkspecs/common/gcc-base.conf"
    sed -i 's/-lSecur32/-lsecur32/; s/-lCrypt32/-lcrypt32/' "$source/src/network/ssl/ssl.pri"
    "$source/configure" -opensource -confirm-license -release -shared \
        -prefix "$prefix" -extprefix "$prefix" -hostprefix "$prefix" \
        -platform linux-g++ -xplatform win32-g++ -device-option CROSS_COMPILE=$triple- \
        -no-schannel -openssl-linked OPENSSL_INCDIR="$openssl/include" OPENSSL_LIBDIR="$openssl/lib" \
        OPENSSL_LIBS="-lssl -lcrypto -lws2_32 -lgdi32 -lcrypt32" -I "$openssl/include" -L "$openssl/lib" \
        -no-opengl -no-dbus -no-icu -no-glib -no-libproxy -qt-zlib -qt-pcre -qt-harfbuzz -qt-freetype -qt-libpng \
        -no-libjpeg -no-gif -qt-doubleconversion -no-feature-sql -no-feature-xml -no-feature-concurrent \
        -no-feature-printer -no-feature-tabletevent -no-feature-direct2d -no-feature-vulkan \
        -nomake examples -nomake tests -no-compile-examples
    make -j"$jobs"
    make install
    cp "$source/LICENSE.LGPL3" "$prefix/LICENSE"
}

# Plots only: without the parts that need modules which Qt is built without here (SVG, OpenGL, printing, threads for
# rasters).
build_qwt() {
    local source=$1 prefix=$2
    sed -i 's|^#include <qtconcurrentrun.h>|#include <qglobal.h>|' "$source"/src/*.cpp
    cat >"$source/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(qwt CXX)
find_package(Qt5 REQUIRED COMPONENTS Widgets)
file(GLOB sources src/*.cpp src/*.h)
list(FILTER sources EXCLUDE REGEX "/qwt_plot_(gl|opengl|svg|renderer)")
add_library(qwt-qt5 SHARED ${sources})
set_target_properties(qwt-qt5 PROPERTIES AUTOMOC ON PREFIX "" IMPORT_PREFIX lib)
target_compile_definitions(qwt-qt5 PUBLIC QWT_DLL PRIVATE QWT_MAKEDLL QWT_NO_SVG QT_NO_KEYWORDS QT_NO_QFUTURE QT_NO_PRINTER)
target_link_libraries(qwt-qt5 PUBLIC Qt5::Widgets)
install(TARGETS qwt-qt5)
END
    cmake -S "$source" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS=-w -DMCS_WINDOWS_ROOTS="$cache/qt" \
        -DCMAKE_TOOLCHAIN_FILE="$here/../../cmake/mingw-w64.cmake" -DCMAKE_INSTALL_PREFIX="$prefix"
    ninja -j"$jobs" install
    $triple-strip --strip-unneeded "$prefix"/bin/*.dll
    mkdir -p "$prefix/include/qwt"
    cp "$source"/src/*.h "$prefix/include/qwt"
    cp "$source/COPYING" "$prefix/LICENSE"
}

# identity WHAT PACKAGE: of a build: what it was made from, and how.
identity() {
    { field "$2" 2 && field "$2" 3 && declare -f "build_$1"; } | sha256sum | cut -d ' ' -f 1
}

# provide WHAT PACKAGE [IDENTITY]: builds it unless the cache has it as it is wanted. A build that was broken off has
# left no stamp and starts over. IDENTITY is that of what it is built with.
provide() {
    local what=$1 package=$2 stamp=$cache/stamps/$1 log=$cache/log/$1.log wanted begin
    wanted=$(identity "$what" "$package")${3:-}
    [ "$(cat "$stamp" 2>/dev/null)" != "$wanted" ] || return 0
    begin=$SECONDS
    mkdir -p "$cache/stamps" "$cache/log"
    rm -rf "$stamp" "${cache:?}/$what" "$cache/build/$what"
    unpack "$package" "$cache/build/$what/source"
    mkdir -p "$cache/build/$what/build"
    say "building $what ($package $(field "$package" 2)); the log is $log"
    # A set -e counts for nothing in a function that is asked for its success: the shell of its own is.
    local status=0
    cd "$cache/build/$what/build"
    (set -e; "build_$what" "$cache/build/$what/source" "$cache/$what") >"$log" 2>&1 </dev/null &
    wait $! || status=$?
    cd "$here"
    if [ "$status" -ne 0 ]; then
        tail -n 20 "$log" >&2
        fail "$what was not built: see $log"
    fi
    rm -rf "$cache/build/$what"
    echo "$wanted" >"$stamp"
    say "built $what in $((SECONDS - begin)) s"
}

# The compiler by its plain name, whatever the machine's alternatives say: threads are those of POSIX.
provide_tools() {
    local tool
    mkdir -p "$cache/tools"
    for tool in gcc g++; do
        ln -sf "$(command -v $triple-$tool-posix)" "$cache/tools/$triple-$tool"
    done
    export PATH="$cache/tools:$PATH"
}

main() {
    case "${1:-}" in
        --where)
            echo "$cache"
            return
            ;;
        --clean)
            rm -rf "${cache:?}"
            return
            ;;
    esac
    mkdir -p "$cache"
    exec 9>"$cache/lock"
    flock -n 9 || { say "waiting for another run of it"; flock 9; }
    if [ "${1:-}" = --pin ]; then
        [ $# -eq 3 ] || fail "--pin needs a name and a version"
        pin "$2" "$3"
        return
    fi
    [ $# -eq 0 ] || fail "unknown option $1"
    provide_tools
    provide openssl openssl
    provide googletest googletest
    provide libmodbus libmodbus
    provide qt qtbase-opensource-src "$(cat "$cache/stamps/openssl")"
    provide qwt qwt "$(cat "$cache/stamps/qt")"
}

main "$@"
exit
