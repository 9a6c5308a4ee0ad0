# The package that find_package(MultiChannelServerCommon CONFIG) finds. Headers are installed with their libraries.
include(CMakePackageConfigHelpers)

set(mcs_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MultiChannelServerCommon)

configure_package_config_file(cmake/MultiChannelServerCommonConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfig.cmake INSTALL_DESTINATION ${mcs_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfig.cmake
  ${PROJECT_BINARY_DIR}/MultiChannelServerCommonConfigVersion.cmake
  DESTINATION ${mcs_package_dir} COMPONENT development)
install(EXPORT MultiChannelServerTargets NAMESPACE MultiChannelServer::
  DESTINATION ${mcs_package_dir} COMPONENT development)
