# What stands in libiokern-tools: the example host, its backends where it looks for them, and a
# manual page made from its help.
set(programs iohost linux_backend modbus_backend)
install(TARGETS iohost
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools EXCLUDE_FROM_ALL)
# One machine has one iohost, so that its modules need no folder for each architecture.
install(TARGETS linux_backend modbus_backend
  LIBRARY DESTINATION lib/iokern/backends COMPONENT tools EXCLUDE_FROM_ALL)

# As Debian wants what it distributes: hardened, without symbols that nobody looks up.
foreach(target IN ITEMS ${programs} iohost_parts linux_backend_parts modbus_backend_parts
    backend_support)
  target_compile_options(${target} PRIVATE -fstack-protector-strong)
  target_compile_definitions(${target} PRIVATE _FORTIFY_SOURCE=2)
endforeach()
foreach(target IN LISTS programs)
  target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now LINKER:--strip-all)
endforeach()

set(manual ${CMAKE_CURRENT_BINARY_DIR}/iohost.1)
find_program(TAVI_IOAPI_HELP2MAN help2man)
mark_as_advanced(TAVI_IOAPI_HELP2MAN)
add_custom_command(OUTPUT ${manual}.gz
  COMMAND ${PROJECT_SOURCE_DIR}/tools/make_manual.sh
    "${TAVI_IOAPI_HELP2MAN}" $<TARGET_FILE:iohost> ${PROJECT_VERSION}
    ${debian_dir}/changelog ${manual}
  DEPENDS iohost ${PROJECT_SOURCE_DIR}/tools/make_manual.sh ${debian_dir}/changelog
  VERBATIM)
add_custom_target(iohost_manual DEPENDS ${manual}.gz)
install(FILES ${manual}.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools EXCLUDE_FROM_ALL)
add_dependencies(packaged ${programs} iohost_manual)
