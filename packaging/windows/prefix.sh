#!/usr/bin/env bash
# Makes a folder with Wine's own files, new or anew, as the tests want it: prefix.sh FOLDER
#
# Windows 10, nobody's desktop, a font, messages of Qt on standard error, and in the folder "shims" of the cache programs
# that run those of this machine which tests start.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cache=$("$here/dependencies.sh" --where)
export MCS_WINE_PREFIX=$1 WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
mkdir -p "$cache/fonts" "$cache/shims/run"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$cache/fonts"
wine=/usr/lib/wine/wine64

# environment NAME VALUE: of everything that runs in this prefix.
environment() {
    $wine reg add 'HKCU\Environment' /v "$1" /t REG_SZ /d "$2" /f >/dev/null 2>&1
}
# What the system's own services start finds the libraries by this alone.
path='C:\windows\system32;C:\windows'
threads=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
for folder in "$cache/qt/bin" "$cache/qwt/bin" "$cache/openssl/bin" "$threads" /usr/x86_64-w64-mingw32/lib; do
    path="$path;Z:$(tr / '\\' <<<"$folder")"
done

fill() {
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    $wine wineboot --init >/dev/null 2>&1
    $wine winecfg /v win10 >/dev/null 2>&1
    $wine reg add 'HKLM\System\CurrentControlSet\Control\Session Manager\Environment' /v PATH /t REG_EXPAND_SZ \
        /d "$path" /f >/dev/null 2>&1
    # Windows can be made there, which nobody sees: else not even those that are hidden.
    $wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f >/dev/null 2>&1
    environment QT_QPA_PLATFORM offscreen
    environment QT_QPA_FONTDIR "Z:$(tr / '\\' <<<"$cache/fonts")"
    environment QT_FORCE_STDERR_LOGGING 1
    # What is told to a registry is written to its file when Wine's server ends.
    env -u DISPLAY /usr/lib/wine/wineserver64 -w 2>/dev/null || true
}

# On a busy machine Wine has lost all that it was told, and said nothing.
is_filled() {
    grep -q '"Graphics"="null"' "$WINEPREFIX/user.reg" && grep -q '"QT_FORCE_STDERR_LOGGING"' "$WINEPREFIX/user.reg" &&
        grep -q '"PATH"=.*Z:' "$WINEPREFIX/system.reg"
}

for attempt in 1 2 3; do
    fill
    is_filled && break
    [ "$attempt" -lt 3 ] || { echo "prefix.sh: Wine does not keep what its registry is told in $WINEPREFIX" >&2; exit 1; }
done

x86_64-w64-mingw32-g++-posix -std=c++17 -O1 -static -Wall -Wextra -DMCS_SCRATCH="\"$cache/shims/run\"" \
    "$here/runprogram.cpp" -o "$cache/shims/runprogram.exe"
for program in mbpoll openssl python3; do
    cp "$cache/shims/runprogram.exe" "$cache/shims/$program.exe"
done
