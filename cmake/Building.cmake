# Compiler flags, the linker and the compiler cache: what every target shares.

add_library(nordkeep_flags INTERFACE)
target_compile_options(nordkeep_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_include_directories(nordkeep_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(nordkeep_flags INTERFACE NORDKEEP_VERSION="${PROJECT_VERSION}" QT_NO_KEYWORDS)

if(NORDKEEP_WERROR)
  target_compile_options(nordkeep_flags INTERFACE -Werror)
endif()
if(NORDKEEP_FUZZ)
  # Coverage for libFuzzer in every library; the fuzz programs alone link its main.
  target_compile_options(nordkeep_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(NORDKEEP_SANITIZE)
  target_compile_options(nordkeep_flags INTERFACE -fsanitize=${NORDKEEP_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(nordkeep_flags INTERFACE -fsanitize=${NORDKEEP_SANITIZE})
  # The sanitizers' own code in the standard library's headers sets this warning off falsely, as the compiler's
  # manual says; the other presets have it, and the sanitizers find the real thing.
  target_compile_options(nordkeep_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# What makes a fault in memory end the program rather than hand it over. Fortified functions need optimisation, and the
# sanitizers bring checks of their own. That programs are linked position-independent is this compiler's default.
if(NORDKEEP_HARDENING AND NOT NORDKEEP_SANITIZE AND NOT NORDKEEP_FUZZ)
  target_compile_options(nordkeep_flags INTERFACE -fstack-protector-strong -fstack-clash-protection
    $<$<NOT:$<OR:$<CONFIG:Debug>,$<BOOL:$<TARGET_PROPERTY:IS_TEST>>>>:-U_FORTIFY_SOURCE$<SEMICOLON>-D_FORTIFY_SOURCE=2>)
  target_link_options(nordkeep_flags INTERFACE -Wl,-z,relro -Wl,-z,now)
endif()
include(CheckPIESupported)
check_pie_supported()
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

if(NORDKEEP_COVERAGE)
  target_compile_options(nordkeep_flags INTERFACE --coverage)
  target_link_options(nordkeep_flags INTERFACE --coverage)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${CCACHE_PROGRAM})
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  target_link_options(nordkeep_flags INTERFACE -fuse-ld=mold)
endif()

# The standard library's headers, read once for all folders that know no toolkit (its flags differ): half of the time
# that a small file takes to compile. Headers are compiled alone without it, so none can lean on it. Not in what ships:
# with optimisation this compiler then gives false alarms of bounds inside its own std::string.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled.cpp CONTENT "")
add_library(nordkeep_precompiled OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
target_link_libraries(nordkeep_precompiled PRIVATE nordkeep_flags)
target_precompile_headers(nordkeep_precompiled PRIVATE ${CMAKE_SOURCE_DIR}/cmake/Precompiled.h)
