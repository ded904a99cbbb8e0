# A compiler cache only saves time: where there is none, everything builds all the same.
find_program(TAVI_IOAPI_CCACHE ccache)
mark_as_advanced(TAVI_IOAPI_CCACHE)
if(TAVI_IOAPI_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # The tests have a precompiled header, which the cache takes only with these two allowances. It
  # knows headers by their paths, so that nothing here may make two clones look like one.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env
    CCACHE_SLOPPINESS=pch_defines,time_macros
    ${TAVI_IOAPI_CCACHE})
endif()
