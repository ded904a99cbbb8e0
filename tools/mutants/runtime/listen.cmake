# Included by each project() in the mutated tree: at the end of the configuration, every test program
# takes the listener in. Projects within it are those of others.
if(NOT CMAKE_CURRENT_SOURCE_DIR STREQUAL CMAKE_SOURCE_DIR)
  return()
endif()
cmake_policy(SET CMP0079 NEW) # targets of other folders may be linked with more

function(iokern_mutants_listen folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE AND target MATCHES "_test$")
      target_link_libraries(${target} PRIVATE iokern_mutants_listener)
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(inner IN LISTS folders)
    iokern_mutants_listen(${inner})
  endforeach()
endfunction()

function(iokern_mutants_finish)
  add_library(iokern_mutants_listener OBJECT ${IOKERN_MUTANTS_RUNTIME}/listener.cpp)
  target_compile_features(iokern_mutants_listener PRIVATE cxx_std_20)
  if(TARGET gtest)
    target_link_libraries(iokern_mutants_listener PRIVATE gtest)
  else()
    target_link_libraries(iokern_mutants_listener PRIVATE GTest::gtest)
  endif()
  iokern_mutants_listen(${CMAKE_SOURCE_DIR}/tests)
endfunction()

cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL iokern_mutants_finish)
