# A compiler cache only saves time: where there is none, everything builds all the same.
find_program(TAVI_IOAPI_CCACHE ccache)
mark_as_advanced(TAVI_IOAPI_CCACHE)
if(TAVI_IOAPI_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # The tests have a precompiled header, which the cache takes only with these two allowances. Paths
  # are relative to the sources, so that one clone serves the next.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env
    CCACHE_SLOPPINESS=pch_defines,time_macros
    CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
    CCACHE_NOHASHDIR=1
    ${TAVI_IOAPI_CCACHE})
endif()
