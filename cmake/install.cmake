# find_package(iokern) gives iokern::iokern.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/iokern)
install(TARGETS iokern EXPORT iokern FILE_SET HEADERS)
install(EXPORT iokern FILE iokernConfig.cmake NAMESPACE iokern:: DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/iokernConfigVersion.cmake
  # The revision symbol admits one minor version only.
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/iokernConfigVersion.cmake DESTINATION ${package_dir})
