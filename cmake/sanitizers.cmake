# Set for the whole build, GoogleTest included: the thread sanitizer misjudges what it has not
# instrumented, and containers that cross into plain code confuse the address sanitizer.
if(TAVI_IOAPI_SANITIZE)
  list(JOIN TAVI_IOAPI_SANITIZE "," sanitizers)
  add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${sanitizers})
  # The tests have operators new and delete of their own, and those that clang++ links for the thread
  # sanitizer clash with them. Linked as if it were C, blocks are watched in malloc.
  if("thread" IN_LIST TAVI_IOAPI_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_link_options(--driver-mode=gcc)
    link_libraries(stdc++ m)
  endif()
  # g++ takes the instrumentation of a union for reads of what it has not seen written.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
# A fuzzer counts the edges of what it looks into, the library and the targets, and needs it fast.
add_library(iokern_fuzzed INTERFACE)
if(TAVI_IOAPI_FUZZ)
  target_compile_options(iokern_fuzzed INTERFACE -O1 -fsanitize=fuzzer-no-link)
endif()
