# quorvel_library(NAME SOURCES file... [LINKS target...])
#
# A static library for the current folder. Its headers are included by their path from the root of the tree
# ("platform/text.h"), but only by targets that link it: each library publishes an include root that holds
# nothing but a link to its own folder, so that an include against the direction of the link graph does not build.
function(quorvel_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  set(root ${CMAKE_BINARY_DIR}/include_roots/${name})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${folder} SYMBOLIC)
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PUBLIC quorvel_options ${ARG_LINKS})
endfunction()

# Compiler options every target shares.
add_library(quorvel_options INTERFACE)
target_compile_options(quorvel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# GCC 12 sees an overlap in string concatenation that is none (its bug 105329).
target_compile_options(quorvel_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(QUORVEL_WERROR)
  target_compile_options(quorvel_options INTERFACE -Werror)
endif()
if(QUORVEL_SANITIZE)
  target_compile_options(quorvel_options INTERFACE -fsanitize=${QUORVEL_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(quorvel_options INTERFACE -fsanitize=${QUORVEL_SANITIZE})
endif()

# quorvel_test(NAME SOURCES file... LINKS target...): one GoogleTest program whose cases CTest knows one by one.
function(quorvel_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE quorvel_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()
