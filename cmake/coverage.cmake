# Counters of clang's source-based coverage, for all that is built here.
if(TAVI_IOAPI_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "TAVI_IOAPI_COVERAGE takes clang")
  endif()
  # Many tests have children that abort or leave at once. Their counts must outlive them, and so the
  # counters lie in the file of counts, which all processes map: they are moved there at run time, and
  # several processes and threads count at a time.
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping -fprofile-update=atomic
    "SHELL:-mllvm -runtime-counter-relocation")
  add_link_options(-fprofile-instr-generate)
  # What comes from a precompiled header is counted, but not said to belong to any line.
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()
