# Debian packages: libiokern, libiokern-dev, libiokern-dbgsym with the debug symbols, and
# libiokern-tools where the examples are built. The presets set what differs between architectures.
set(debian_dir ${PROJECT_SOURCE_DIR}/packaging)

file(STRINGS ${debian_dir}/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^iokern \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "${debian_dir}/changelog does not begin with ${PROJECT_VERSION}")
endif()

# In the form that Debian asks for, from the licence as it stands.
file(STRINGS LICENSE copyright REGEX "^Copyright")
string(REGEX REPLACE "^Copyright \\(c\\) " "" copyright "${copyright}")
file(READ LICENSE licence)
string(REGEX REPLACE "^.*\n(Permission is hereby granted)" "\\1" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n" "\n " licence " ${licence}")
string(REPLACE "\n \n" "\n .\n" licence "${licence}")
configure_file(${debian_dir}/copyright.in copyright @ONLY)

# These stand in packages only, and not in what "cmake --install" gives.
find_program(TAVI_IOAPI_GZIP gzip REQUIRED)
mark_as_advanced(TAVI_IOAPI_GZIP)
execute_process(
  COMMAND ${TAVI_IOAPI_GZIP} -9 -n -c ${debian_dir}/changelog
  OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
  COMMAND_ERROR_IS_FATAL ANY)
# All that "cpack" takes.
add_custom_target(packaged DEPENDS iokern)
set(components runtime development)
set(runtime_package libiokern)
set(development_package libiokern-dev)
set(tools_package libiokern-tools)
if(TARGET iohost)
  list(APPEND components tools)
  include(${CMAKE_CURRENT_LIST_DIR}/tools_package.cmake)
endif()
foreach(component IN LISTS components)
  set(package ${${component}_package})
  install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/copyright
    ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
  if(EXISTS ${debian_dir}/${package}.lintian-overrides)
    install(FILES ${debian_dir}/${package}.lintian-overrides
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package}
      COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME iokern)
# Each package has a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT "the iokern authors <iokern@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE iokern)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian_dir}/triggers)
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Data model that hosts and backends of controllers share
A host talks to programmable controllers through backends: modules that are
built on their own, each for one family of controllers. This library is what
host and backend share: values with checked conversions, structures,
identifiers, results, configuration and errors.
.
Hosts and modules ask for libiokern.so without a version. A module that was
built for another revision does not load: the symbol is missing that carries
the revision in its name.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"Data model that hosts and backends of controllers share, headers
A host talks to programmable controllers through backends: modules that are
built on their own, each for one family of controllers. The library libiokern
is what host and backend share: values with checked conversions, structures,
identifiers, results, configuration and errors.
.
This package holds what it takes to build hosts and backends: the headers,
the CMake package, the description for pkg-config, the printers for gdb, the
guides, and a backend to begin with.")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${tools_package})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
# Of our own library the tools take the very version that they are packaged with.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"Data model that hosts and backends of controllers share, a host to try
A host talks to programmable controllers through backends: modules that are
built on their own, each for one family of controllers. The library libiokern
is what host and backend share: values with checked conversions, structures,
identifiers, results, configuration and errors.
.
This package holds iohost, a host for the command line that browses, reads,
writes and watches variables and sees whether a backend keeps the rules; a
backend for controllers that speak Modbus TCP; and one for the data of the
machine that it runs on.")

set(CPACK_READELF_EXECUTABLE ${CMAKE_READELF})
set(CPACK_OBJCOPY_EXECUTABLE ${CMAKE_OBJCOPY})
if(CMAKE_CROSSCOMPILING)
  # What is known of the libraries of a cross compiler names its own packages. These versions are
  # those that it links with; an older one might do.
  string(REGEX MATCH "^[0-9]+" compiler_version "${CMAKE_CXX_COMPILER_VERSION}")
  file(STRINGS ${CMAKE_FIND_ROOT_PATH}/include/features.h c_library
    REGEX "^#define[ \t]+__GLIBC_+(MINOR__)?[ \t]+[0-9]+$")
  string(REGEX REPLACE "[^0-9;]" "" c_library "${c_library}")
  string(REPLACE ";" "." c_library "${c_library}")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS
    "libc6 (>= ${c_library}), libgcc-s1 (>= ${compiler_version}), libstdc++6 (>= ${compiler_version})")
else()
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
endif()

set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/finish_packages.cmake)
include(CPack)
