# The commit that is built, for whoever asks a program for its version; empty without a repository.
find_package(Git QUIET)
set(NORDKEEP_COMMIT "")
if(EXISTS ${CMAKE_SOURCE_DIR}/cmake/commit.txt)
  # What packages are built from has no repository of its own (packaging/build-packages).
  file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/commit.txt NORDKEEP_COMMIT)
elseif(Git_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --short=12 HEAD WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                  OUTPUT_VARIABLE NORDKEEP_COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --git-path logs/HEAD WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                  OUTPUT_VARIABLE moves OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  cmake_path(ABSOLUTE_PATH moves BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
  if(EXISTS ${moves})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${moves})
  endif()
endif()
# One file alone, so that a commit does not build everything anew.
set_source_files_properties(app/Program.cpp PROPERTIES COMPILE_DEFINITIONS NORDKEEP_COMMIT="${NORDKEEP_COMMIT}")
