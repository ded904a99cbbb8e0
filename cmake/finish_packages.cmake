# Run by CPack on the packages that it has made, for what it has no setting for.
find_program(DPKG_DEB dpkg-deb REQUIRED)

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/finish)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND ${DPKG_DEB} --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)

  # One machine may hold the packages of several architectures, but programs only once.
  file(READ ${tree}/DEBIAN/control control)
  if(NOT EXISTS ${tree}/usr/bin)
    string(PREPEND control "Multi-Arch: same\n")
  endif()
  # Debug symbols are a package as any other.
  string(REGEX REPLACE "\nPackage-Type: [^\n]*" "" control "${control}")
  file(WRITE ${tree}/DEBIAN/control "${control}")

  # The trigger does what these scripts are for.
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)

  # The sums of debug symbols come with paths of the build, and their licence not at all.
  if(EXISTS ${tree}/usr/lib/debug)
    file(MAKE_DIRECTORY ${tree}/usr/share/doc)
    file(CREATE_LINK libiokern ${tree}/usr/share/doc/libiokern-dbgsym SYMBOLIC)
    file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${tree} ${tree}/usr/lib/debug/*)
    set(sums "")
    foreach(file IN LISTS files)
      file(CHMOD ${tree}/${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
      file(MD5 ${tree}/${file} sum)
      string(APPEND sums "${sum}  ${file}\n")
    endforeach()
    file(WRITE ${tree}/DEBIAN/md5sums "${sums}")
  endif()

  execute_process(COMMAND ${DPKG_DEB} --root-owner-group -Zxz --build ${tree} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
