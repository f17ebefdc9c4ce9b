# One static library a floor of src/, and one test program a floor of tests/.

# tavlo_floor(name LINKS libraries...): library tavlo_<name> from the sources
# of the calling folder and its sub-folders. What stands in module/ is a target of
# its own and no part of the library.
function(tavlo_floor name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
  list(FILTER sources EXCLUDE REGEX "/module/")
  if(NOT sources)
    add_library(tavlo_${name} INTERFACE)
    target_link_libraries(tavlo_${name} INTERFACE ${ARG_LINKS})
    return()
  endif()
  add_library(tavlo_${name} STATIC ${sources})
  target_include_directories(tavlo_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(tavlo_${name} PUBLIC ${ARG_LINKS})
endfunction()

# tavlo_tests(name LINKS libraries...): test program of the calling folder;
# every test of it is one for ctest.
function(tavlo_tests name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(tavlo_${name}_tests ${sources})
  target_link_libraries(tavlo_${name}_tests PRIVATE tavlo_test_support ${ARG_LINKS})
  target_precompile_headers(tavlo_${name}_tests PRIVATE <gtest/gtest.h> <string> <vector>)
  gtest_discover_tests(tavlo_${name}_tests
    TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
