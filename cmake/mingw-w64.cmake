# Windows x86-64 from Linux, by mingw-w64 with threads of POSIX.
#
# MCS_WINDOWS_ROOTS are the folders with Qt, Qwt, OpenSSL, libmodbus and GoogleTest for Windows; without it, they are those that
# packaging/windows/dependencies.sh builds. Programs run by Wine, through packaging/windows/wine-run.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mcs_triple x86_64-w64-mingw32)
find_program(MCS_MINGW_CC NAMES ${mcs_triple}-gcc-posix ${mcs_triple}-gcc REQUIRED)
find_program(MCS_MINGW_CXX NAMES ${mcs_triple}-g++-posix ${mcs_triple}-g++ REQUIRED)
set(CMAKE_C_COMPILER ${MCS_MINGW_CC})
set(CMAKE_CXX_COMPILER ${MCS_MINGW_CXX})
set(CMAKE_RC_COMPILER ${mcs_triple}-windres)

if(NOT MCS_WINDOWS_ROOTS)
  execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows/dependencies.sh --where
    OUTPUT_VARIABLE mcs_cache OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(MCS_WINDOWS_ROOTS ${mcs_cache}/qt ${mcs_cache}/qwt ${mcs_cache}/openssl ${mcs_cache}/libmodbus ${mcs_cache}/googletest)
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MCS_WINDOWS_ROOTS)
set(CMAKE_FIND_ROOT_PATH ${MCS_WINDOWS_ROOTS} /usr/${mcs_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows/wine-run)

# lrelease runs here.
file(GLOB mcs_linguist /usr/lib/*/cmake/Qt5LinguistTools /usr/lib*/cmake/Qt5LinguistTools)
if(mcs_linguist AND NOT Qt5LinguistTools_DIR)
  list(GET mcs_linguist 0 mcs_linguist)
  set(Qt5LinguistTools_DIR ${mcs_linguist} CACHE PATH "Qt's tools for translations, of this machine")
endif()

# pkg-config knows nothing of toolchain files.
list(TRANSFORM MCS_WINDOWS_ROOTS APPEND /lib/pkgconfig OUTPUT_VARIABLE mcs_pkg_config)
list(JOIN mcs_pkg_config : mcs_pkg_config)
set(ENV{PKG_CONFIG_LIBDIR} ${mcs_pkg_config})
set(ENV{PKG_CONFIG_PATH} "")
