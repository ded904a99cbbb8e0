# Linked privately by everything of ours, so that no user of the library inherits it.
add_library(iokern_warnings INTERFACE)
target_compile_options(iokern_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # g++ notes at every such call that argument passing changed in its version 7.
  target_compile_options(iokern_warnings INTERFACE -Wno-psabi)
endif()
