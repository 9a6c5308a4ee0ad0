#!/usr/bin/env bash
# build.sh [SOURCE]: builds the packages in SOURCE/build/package/packages, with the flags that Debian builds with. What is
# built depends on neither the folder nor the time.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"
source=$PWD

# The time of what is packed: of the last change, else of what it is described by.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)}
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022
export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g
flags="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS) -ffile-prefix-map=$source=."
links=$(dpkg-buildflags --get LDFLAGS)

# What is handed out comes from no cache: one may write paths its own way, which traces then show.
cmake --preset package -DCMAKE_CXX_COMPILER_LAUNCHER= -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$links" \
    -DCMAKE_SHARED_LINKER_FLAGS="$links" -DCMAKE_MODULE_LINKER_FLAGS="$links" >/dev/null
cmake --build --preset package
rm -rf build/package/packages build/package/_CPack_Packages
(cd build/package && cpack -G DEB >cpack.log 2>&1) || { cat build/package/cpack.log; exit 1; }
rm -rf build/package/packages/_CPack_Packages
