# The client library of NATS, as the target Cnats::Cnats. The description that Debian installs with it asks for a static
# library that is in no package.
find_path(CNATS_INCLUDE_DIR nats/nats.h)
find_library(CNATS_LIBRARY NAMES nats)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Cnats REQUIRED_VARS CNATS_LIBRARY CNATS_INCLUDE_DIR)
if(Cnats_FOUND AND NOT TARGET Cnats::Cnats)
  add_library(Cnats::Cnats UNKNOWN IMPORTED)
  set_target_properties(Cnats::Cnats PROPERTIES IMPORTED_LOCATION ${CNATS_LIBRARY})
  target_include_directories(Cnats::Cnats SYSTEM INTERFACE ${CNATS_INCLUDE_DIR})
endif()
mark_as_advanced(CNATS_INCLUDE_DIR CNATS_LIBRARY)
