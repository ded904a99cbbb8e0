# find_package(iokern) gives iokern::iokern, and pkg-config knows iokern. Both look for all else by
# where they stand themselves, so that an installed tree may be moved.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/iokern)
install(TARGETS iokern EXPORT iokern
  LIBRARY COMPONENT runtime
  FILE_SET HEADERS COMPONENT development)
install(EXPORT iokern FILE iokernConfig.cmake NAMESPACE iokern::
  DESTINATION ${package_dir} COMPONENT development)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/iokernConfigVersion.cmake
  # The revision symbol admits one minor version only.
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/iokernConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pkgconfig_to_prefix
  ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix "${pkgconfig_to_prefix}")
configure_file(cmake/iokern.pc.in iokern.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/iokern.pc
  DESTINATION ${pkgconfig_dir} COMPONENT development)

# gdb loads the printers together with the library: by itself below the prefix /usr, elsewhere after
# "add-auto-load-scripts-directory <datadir>/gdb/auto-load". The prefix is that of the installation.
cmake_path(IS_ABSOLUTE CMAKE_INSTALL_LIBDIR libdir_is_absolute)
set(printers_dir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load)
if(libdir_is_absolute)
  string(APPEND printers_dir ${CMAKE_INSTALL_LIBDIR})
else()
  string(APPEND printers_dir "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
endif()
install(FILES ${PROJECT_SOURCE_DIR}/debugger/libiokern.so-gdb.py
  DESTINATION ${printers_dir} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/debugger/iokern_printers
  DESTINATION ${printers_dir} COMPONENT development
  FILES_MATCHING PATTERN *.py PATTERN __pycache__ EXCLUDE)

# The guides, and examples to begin with, which stand for themselves wherever they are copied to.
set(documents_dir ${CMAKE_INSTALL_DATADIR}/doc/libiokern-dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/
  DESTINATION ${documents_dir} COMPONENT development
  FILES_MATCHING PATTERN *.md PATTERN *.svg)
install(FILES ${PROJECT_SOURCE_DIR}/examples/backend_module.hpp
  DESTINATION ${documents_dir}/examples COMPONENT development)
install(DIRECTORY
  ${PROJECT_SOURCE_DIR}/examples/first ${PROJECT_SOURCE_DIR}/examples/starter
  DESTINATION ${documents_dir}/examples COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/backend_support
  DESTINATION ${documents_dir}/examples COMPONENT development
  FILES_MATCHING PATTERN *.hpp PATTERN *.cpp)
