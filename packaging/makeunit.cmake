# Part of the installation: makes the unit MCS_UNIT for a program in MCS_BINDIR, which may be below the prefix.
get_filename_component(MCS_FULL_BINDIR "${MCS_BINDIR}" ABSOLUTE BASE_DIR "${CMAKE_INSTALL_PREFIX}")
configure_file("${MCS_UNIT_TEMPLATE}" "${MCS_UNIT}" @ONLY)
