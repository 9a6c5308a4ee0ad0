# What others wrote, read once per kind of program instead of once per source: MCS_PRECOMPILE. Nothing of ours is in it,
# so that a change of a header compiles what includes it. Each source still includes what it needs, which the builds
# without this show.

# mcs_add_precompiled(<kind> <libraries> <headers>...): what mcs_precompile(<target> <kind>) reuses.
function(mcs_add_precompiled kind libraries)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/precompiled_${kind}.cpp CONTENT "")
  add_library(mcs_precompiled_${kind} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/precompiled_${kind}.cpp)
  target_link_libraries(mcs_precompiled_${kind} PRIVATE ${libraries} mcs_warnings)
  target_compile_definitions(mcs_precompiled_${kind} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
  target_precompile_headers(mcs_precompiled_${kind} PRIVATE ${ARGN})
endfunction()

function(mcs_precompile target kind)
  if(MCS_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM mcs_precompiled_${kind})
    # GCC takes them only if all is defined that was defined then, even if it makes no difference.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_CORE_LIB QT_NETWORK_LIB)
      if(kind MATCHES gui)
        target_compile_definitions(${target} PRIVATE QT_GUI_LIB QT_WIDGETS_LIB)
      endif()
    endif()
  endif()
endfunction()

if(MCS_PRECOMPILE)
  # The time at which it was made would keep compiler caches from knowing it again.
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  endif()
  set(mcs_precompiled_headers <algorithm> <cstdint> <functional> <limits> <map> <memory> <optional> <ostream> <set>
    <string> <utility> <vector> <QtCore/QtCore> <QtNetwork/QtNetwork>)
  mcs_add_precompiled(core Qt5::Network ${mcs_precompiled_headers})
  mcs_add_precompiled(gui "Qt5::Network;Qt5::Widgets" ${mcs_precompiled_headers} <QtWidgets/QtWidgets>)
  if(MCS_BUILD_TESTS)
    find_package(GTest REQUIRED)
    find_package(Qt5 5.15 REQUIRED COMPONENTS Test)
    list(APPEND mcs_precompiled_headers <gtest/gtest.h> <gmock/gmock.h>)
    mcs_add_precompiled(test "Qt5::Network;GTest::gtest;GTest::gmock" ${mcs_precompiled_headers})
    mcs_add_precompiled(guitest "Qt5::Network;Qt5::Widgets;Qt5::Test;GTest::gtest;GTest::gmock"
      ${mcs_precompiled_headers} <QtWidgets/QtWidgets> <QtTest/QtTest>)
  endif()
endif()
