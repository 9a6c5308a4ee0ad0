# What all targets of the project are built with.

# One target for the warnings; everything of ours links it, nothing that is installed passes it on.
add_library(mcs_warnings INTERFACE)
if(MSVC)
  target_compile_options(mcs_warnings INTERFACE /W4 /utf-8 $<$<BOOL:${MCS_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(mcs_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${MCS_WARNINGS_AS_ERRORS}>:-Werror>
    # Macros of Qt and GoogleTest may be called without what they name "...".
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
endif()

# Windows' own min and max are macros, which would replace those of the standard library.
if(WIN32)
  add_compile_definitions(NOMINMAX)
endif()

# A linker that is quick, where there is one.
if(PROJECT_IS_TOP_LEVEL)
  include(CheckLinkerFlag)
  foreach(linker mold lld)
    check_linker_flag(CXX -fuse-ld=${linker} MCS_HAS_LINKER_${linker})
    if(MCS_HAS_LINKER_${linker})
      add_link_options(-fuse-ld=${linker})
      break()
    endif()
  endforeach()
endif()

# Instrumentation applies to everything that is built, or it would miss what crosses a library.
if(MCS_SANITIZERS)
  add_compile_options(-fsanitize=${MCS_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${MCS_SANITIZERS})
endif()
if(MCS_LIBFUZZER)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(MCS_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

# mcs_add_library(<target> <export name> <building macro>): a shared library that is installed as
# MultiChannelServer::<export name>. Includes read as in the source tree, in the project and once installed.
function(mcs_add_library target export_name building_macro)
  add_library(${target} SHARED)
  add_library(MultiChannelServer::${export_name} ALIAS ${target})
  target_compile_definitions(${target}
    PRIVATE ${building_macro} QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:mcs_warnings>)
  # Calls within the library need no detour, since nobody replaces its functions.
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND UNIX AND NOT APPLE)
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  endif()
  # Installed, each finds the others beside it: a program's own search path does not hold for them.
  if(UNIX AND NOT APPLE)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${export_name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  install(TARGETS ${target} EXPORT MultiChannelServerTargets)
endfunction()
