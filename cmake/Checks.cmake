# Targets that look at the code instead of building it; ./test full runs them.

# Every tracked source in the form that .clang-format gives it. Only one version of the formatter gives that form.
find_program(CLANG_FORMAT clang-format-14)
add_custom_target(check-format
  COMMAND ${CMAKE_SOURCE_DIR}/cmake/tracked-sources ${CLANG_FORMAT} --dry-run -Werror
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)

find_program(RUN_CLANG_TIDY run-clang-tidy-14)
add_custom_target(check-tidy
  COMMAND ${RUN_CLANG_TIDY} -p ${CMAKE_BINARY_DIR} -quiet -j 2 "^${CMAKE_SOURCE_DIR}/(app|console|network|pipeline|platform|ports|reports|runtime|status|store|tools|translation)/.*"
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)

if(NORDKEEP_COVERAGE)
  # Behind everything that the tests run.
  set(built)
  foreach(folder . tools packaging tests)
    get_property(targets DIRECTORY ${CMAKE_SOURCE_DIR}/${folder} PROPERTY BUILDSYSTEM_TARGETS)
    list(APPEND built ${targets})
  endforeach()
  list(REMOVE_ITEM built check-format check-tidy)
  add_custom_target(coverage
    COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${CMAKE_BINARY_DIR} -j3 --output-on-failure
    COMMAND ${CMAKE_SOURCE_DIR}/cmake/coverage-table ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} USES_TERMINAL VERBATIM)
  add_dependencies(coverage ${built})
endif()
