# What all targets of the project are built with.

# One target for the warnings; everything of ours links it, nothing that is installed passes it on.
add_library(mcs_warnings INTERFACE)
if(MSVC)
  # Members of exported classes that are themselves not exported (4251, 4275) are private, or of the standard library and
  # of Qt, which both sides have alike.
  target_compile_options(mcs_warnings INTERFACE
    /W4 /wd4251 /wd4275 /utf-8 /permissive- /Zc:__cplusplus $<$<BOOL:${MCS_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(mcs_warnings INTERFACE
    -Wall $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wno-subobject-linkage>
     -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${MCS_WARNINGS_AS_ERRORS}>:-Werror>
    # Macros of Qt and GoogleTest may be called without what they name "...".
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
endif()

# Windows' own min and max are macros, which would replace those of the standard library.
if(WIN32)
  add_compile_definitions(NOMINMAX)
endif()

# A linker that is quick, where there is one. Those for Windows that are quick know too little of MinGW.
if(PROJECT_IS_TOP_LEVEL AND NOT WIN32)
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

# What stands in file names that are particular to an operating system.
if(WIN32)
  set(mcs_system windows)
else()
  set(mcs_system posix)
endif()

# mcs_describe(<target> <description>): on Windows, what Explorer tells of the file, and its version.
function(mcs_describe target mcs_description)
  if(WIN32)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
      set(mcs_file_type VFT_APP)
    else()
      set(mcs_file_type VFT_DLL)
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  endif()
endfunction()

# The part of the version that every version has to itself which may break programs that were linked with another one.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(mcs_soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(mcs_soversion ${PROJECT_VERSION_MAJOR})
endif()

# mcs_add_library(<target> <export name> <building macro> <kind> [COMPONENT <name>] PUBLIC <libraries>...
# [PRIVATE <libraries>...]): a shared library that is installed as MultiChannelServer::<export name>, with a description for
# pkg-config. <kind> is that of mcs_precompile, <name> the package that it goes to. Includes read as in the source tree, in
# the project and once installed. It is made of folders, by mcs_add_face and mcs_add_room.
#
# <target>Objects is the same for tests of what the library keeps to itself: they link its objects, so that the library
# exports nothing for their sake. A program links the one or the other.
function(mcs_add_library target export_name building_macro kind)
  cmake_parse_arguments(PARSE_ARGV 4 arg "" "COMPONENT" "PUBLIC;PRIVATE")
  if(NOT arg_COMPONENT)
    set(arg_COMPONENT libraries)
  endif()
  add_library(${target} SHARED)
  add_library(MultiChannelServer::${export_name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
  # Calls within the library need no detour, since nobody replaces its functions.
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND UNIX AND NOT APPLE)
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  endif()
  # Installed, each finds the others beside it: a program's own search path does not hold for them.
  if(UNIX AND NOT APPLE)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
  # Who loads a module knows its name, which no compiler is to change.
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
  endif()
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${export_name} VERSION ${PROJECT_VERSION} SOVERSION ${mcs_soversion} LINKER_LANGUAGE CXX
    MCS_BUILDING_MACRO ${building_macro} MCS_KIND ${kind} MCS_LINKED "${arg_PUBLIC};${arg_PRIVATE}")
  mcs_describe(${target} "${export_name} library")
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR})
  install(TARGETS ${target} EXPORT MultiChannelServerTargets
    RUNTIME COMPONENT ${arg_COMPONENT}
    LIBRARY COMPONENT ${arg_COMPONENT} NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
  mcs_install_pkg_config(${target} ${arg_PUBLIC})

  add_library(${target}Objects INTERFACE)
  target_compile_definitions(${target}Objects INTERFACE ${building_macro})
  target_include_directories(${target}Objects INTERFACE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${target}Objects INTERFACE ${arg_PUBLIC} ${arg_PRIVATE})
endfunction()

# mcs_install_pkg_config(<target> <public library>...): what pkg-config tells of it. The prefix is found from where that lies.
function(mcs_install_pkg_config mcs_target)
  set(mcs_required ${ARGN})
  list(TRANSFORM mcs_required REPLACE "^Qt5::" "Qt5")
  list(JOIN mcs_required ", " mcs_required)
  file(RELATIVE_PATH mcs_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  string(REGEX REPLACE "/$" "" mcs_prefix "${mcs_prefix}")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/${mcs_target}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${mcs_target}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

# mcs_add_room(<library> <folder> [MOC] <sources>...): the sources of a folder that is private to the one above it, built
# once, for the library and for its tests. MOC: it has classes of Qt with signals, slots or properties.
function(mcs_add_room library folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "MOC" "" "")
  cmake_path(ABSOLUTE_PATH folder NORMALIZE OUTPUT_VARIABLE path)
  cmake_path(RELATIVE_PATH path BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
  string(REGEX REPLACE "/$" "" path ${path})
  string(MAKE_C_IDENTIFIER "mcs_${path}" room)
  list(TRANSFORM arg_UNPARSED_ARGUMENTS PREPEND ${folder}/)
  get_target_property(building_macro ${library} MCS_BUILDING_MACRO)
  get_target_property(kind ${library} MCS_KIND)
  get_target_property(linked ${library} MCS_LINKED)

  add_library(${room} OBJECT ${arg_UNPARSED_ARGUMENTS})
  set_target_properties(${room} PROPERTIES AUTOMOC ${arg_MOC} POSITION_INDEPENDENT_CODE ON)
  target_compile_definitions(${room}
    PRIVATE ${building_macro} QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND UNIX AND NOT APPLE)
    target_compile_options(${room} PRIVATE -fno-semantic-interposition)
  endif()
  target_include_directories(${room} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${room} PRIVATE ${linked} mcs_warnings)
  mcs_precompile(${room} ${kind})
  target_sources(${library} PRIVATE $<TARGET_OBJECTS:${room}>)
  target_sources(${library}Objects INTERFACE $<TARGET_OBJECTS:${room}>)
endfunction()

# mcs_add_face(<library> <folder> [MOC] <sources>... [KEPT <headers>...]): the same of a folder whose headers are installed,
# all of them. KEPT are those of classes that stand there by agreement and are nobody's interface.
function(mcs_add_face library folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "KEPT")
  mcs_add_room(${library} ${folder} ${arg_UNPARSED_ARGUMENTS})
  cmake_path(ABSOLUTE_PATH folder NORMALIZE OUTPUT_VARIABLE path)
  file(GLOB headers CONFIGURE_DEPENDS ${path}/*.h)
  list(TRANSFORM arg_KEPT PREPEND ${path}/)
  list(REMOVE_ITEM headers ${arg_KEPT})
  target_sources(${library} PUBLIC FILE_SET HEADERS FILES ${headers})
endfunction()
