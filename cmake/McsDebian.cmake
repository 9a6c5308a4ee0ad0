# The packages for Debian, made by CPack: ./dev package. What is particular to them is in packaging/debian.
set(mcs_debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(MCS_MAINTAINER "MultiChannelServer developers <multichannelserver@example.org>"
  CACHE STRING "Whom the packages name: whoever hands them out")
set(MCS_PACKAGE_REVISION 1 CACHE STRING "How often this version has been packed")
set(mcs_package_version ${PROJECT_VERSION}-${MCS_PACKAGE_REVISION})

# What is in /etc, in whatever prefix the programs are.
install(FILES ${mcs_debian}/mcserver.default DESTINATION /etc/default RENAME mcserver COMPONENT server)
install(DIRECTORY DESTINATION /etc/mcserver COMPONENT server)
install(FILES ${mcs_debian}/mcserver.sysusers
  DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/sysusers.d RENAME mcserver.conf COMPONENT server)
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/multichannelserver-doc COMPONENT documents)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/multichannelserver-doc COMPONENT documents
  PATTERN "*.sh" EXCLUDE PATTERN "*.py" EXCLUDE PATTERN Doxyfile EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME multichannelserver)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # or it stands before that of each package
set(CPACK_PACKAGE_CONTACT "${MCS_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_SET_DESTDIR ON)  # so that /etc is below it, and the unit names the prefix
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${MCS_PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/McsDebianStage.cmake)
set(CPACK_COMPONENTS_ALL "")
set(mcs_stages "")

# mcs_package(<component> <package> <section> DEPENDS <relations> SAYS <synopsis> <lines>...): the package that a component
# becomes. Libraries of others are found by dpkg-shlibdeps.
macro(mcs_package component package section)
  cmake_parse_arguments(mcs "ALL" "DEPENDS;RECOMMENDS;SUGGESTS" "SAYS" ${ARGN})
  string(TOUPPER ${component} mcs_upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  list(JOIN mcs_SAYS "\n" CPACK_COMPONENT_${mcs_upper}_DESCRIPTION)
  list(APPEND mcs_stages "${component}=${package}")
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${mcs_upper}_DESCRIPTION "${CPACK_COMPONENT_${mcs_upper}_DESCRIPTION}")
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_PRIORITY optional)
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_DEPENDS "${mcs_DEPENDS}")
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_RECOMMENDS "${mcs_RECOMMENDS}")
  set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_SUGGESTS "${mcs_SUGGESTS}")
  if(mcs_ALL)
    set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_${mcs_upper}_PACKAGE_SHLIBDEPS OFF)
  endif()
endmacro()

# Libraries are packages by the part of the version that keeps their interface, so that two of them can be installed.
set(mcs_library libmultichannelserver${mcs_soversion})
set(mcs_gui libmultichannelserver-gui${mcs_soversion})
set(mcs_nats libmultichannelserver-nats${mcs_soversion})
set(mcs_since "(>= ${PROJECT_VERSION})")
set(mcs_same "(= ${mcs_package_version})")
set(mcs_about
  "One server owns one direction finder and offers it to many clients at once,"
  "each with a virtual device of its own. Server and clients share a tree of"
  "typed values." ".")

mcs_package(libraries ${mcs_library} libs
  RECOMMENDS "multichannelserver-l10n"
  SAYS "libraries of a multi-channel direction-finding server" ${mcs_about}
       "These are the libraries for programs without windows: the tree, the"
       "connection to a server, and Modbus/TCP to input modules.")
mcs_package(gui-libraries ${mcs_gui} libs
  DEPENDS "${mcs_library} ${mcs_since}" RECOMMENDS "multichannelserver-l10n"
  SAYS "libraries of a multi-channel direction-finding server - windows" ${mcs_about}
       "These are the libraries for programs with windows: the data objects of a"
       "server, its displays, and widgets that are bound to values.")
mcs_package(nats-libraries ${mcs_nats} libs
  DEPENDS "${mcs_library} ${mcs_since}"
  SAYS "libraries of a multi-channel direction-finding server - NATS" ${mcs_about}
       "This is the library by which servers and clients find each other through"
       "NATS.")
mcs_package(development libmultichannelserver-dev libdevel
  DEPENDS "${mcs_library} ${mcs_same}, ${mcs_gui} ${mcs_same}, ${mcs_nats} ${mcs_same}, qtbase5-dev"
  SUGGESTS "multichannelserver-doc, cmake"
  SAYS "libraries of a multi-channel direction-finding server - development" ${mcs_about}
       "These are the headers, and what CMake and pkg-config know of the libraries.")
mcs_package(designer multichannelserver-designer devel
  DEPENDS "${mcs_library} ${mcs_since}, ${mcs_gui} ${mcs_since}, ${mcs_nats} ${mcs_since}" RECOMMENDS "libmultichannelserver-dev, qttools5-dev-tools"
  SUGGESTS "multichannelserver-doc"
  SAYS "libraries of a multi-channel direction-finding server - Qt Designer" ${mcs_about}
       "This is a plugin by which Qt Designer, and programs that load forms, know"
       "the widgets and displays that show values of a server's tree.")
mcs_package(server mcserver net
  DEPENDS "${mcs_library} ${mcs_since}, ${mcs_gui} ${mcs_since}, ${mcs_nats} ${mcs_since}, systemd | systemd-standalone-sysusers | systemd-sysusers"
  RECOMMENDS "mctree, multichannelserver-l10n" SUGGESTS "mcserver-hamlib, multichannelserver-doc, nats-server"
  SAYS "multi-channel direction-finding server" ${mcs_about}
       "This is the server, as a service of systemd that listens on this machine"
       "until it is told otherwise. Its direction finder is a simulated one.")
if(TARGET mcserver_hamlib)
  # Loaded by the server of the same build, and by no other.
  mcs_package(hamlib mcserver-hamlib net
    DEPENDS "mcserver ${mcs_same}"
    SAYS "multi-channel direction-finding server - receivers" ${mcs_about}
         "With this the server owns real receivers, which it reaches by Hamlib:"
         "each is a frequency channel that clients tune.")
endif()
mcs_package(console mcconsole net
  DEPENDS "${mcs_library} ${mcs_since}, ${mcs_gui} ${mcs_since}, ${mcs_nats} ${mcs_since}, hicolor-icon-theme"
  RECOMMENDS "multichannelserver-l10n" SUGGESTS "multichannelserver-doc, qttranslations5-l10n"
  SAYS "operator's window on a multi-channel direction-finding server" ${mcs_about}
       "This is the window of those who work with it: who uses which frequency,"
       "what ground transmitters blank, what happened, and a device to tune.")
mcs_package(mctree mctree net
  DEPENDS "${mcs_library} ${mcs_since}, ${mcs_nats} ${mcs_since}" SUGGESTS "multichannelserver-doc"
  SAYS "tree of a multi-channel direction-finding server - command line" ${mcs_about}
       "This reads, writes and watches that tree, for people and for scripts. It"
       "needs no display.")
mcs_package(dimodule dimodule net
  DEPENDS "${mcs_library} ${mcs_since}" SUGGESTS "multichannelserver-doc"
  SAYS "simulated modules of digital inputs on Modbus/TCP"
       "Answers like modules whose inputs are wired to ground transmitters, with"
       "faults on demand: for tests, demonstrations, and whoever wants to see what"
       "a lost module does, without the wiring.")
mcs_package(demo mcdemo net
  DEPENDS "${mcs_library} ${mcs_since}, ${mcs_gui} ${mcs_since}, ${mcs_nats} ${mcs_since}, mcserver ${mcs_same}, mcconsole ${mcs_same}, dimodule ${mcs_same}"
  SUGGESTS "nats-server, openssl"
  SAYS "multi-channel direction-finding server - demonstration" ${mcs_about}
       "This shows a server, two clients and an operator at work within a minute.")
mcs_package(translations multichannelserver-l10n localization ALL
  SAYS "texts of a multi-channel direction-finding server in other languages" ${mcs_about}
       "These are the texts of its libraries and windows in German.")
mcs_package(documents multichannelserver-doc doc ALL
  SAYS "documents of a multi-channel direction-finding server" ${mcs_about}
       "These tell how it is run, used and programmed, and why it is as it is.")

# The unit is a component of its own, for whoever wants no more of an installation.
list(APPEND CPACK_COMPONENTS_ALL service)
set(CPACK_COMPONENT_SERVER_GROUP server)
set(CPACK_COMPONENT_SERVICE_GROUP server)
set(CPACK_COMPONENT_GROUP_SERVER_DESCRIPTION "${CPACK_COMPONENT_SERVER_DESCRIPTION}")
file(GLOB CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA ${mcs_debian}/mcserver/*)
# dpkg has the cache of libraries renewed once, by a trigger. CPack would write scripts for that, unless it is given others;
# what is not there it leaves out.
foreach(upper LIBRARIES GUI-LIBRARIES NATS-LIBRARIES)
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${mcs_debian}/libraries/triggers /nowhere/postinst /nowhere/postrm)
endforeach()

configure_file(${mcs_debian}/stage.cmake.in ${PROJECT_BINARY_DIR}/McsDebianStage.cmake @ONLY)
include(CPack)
