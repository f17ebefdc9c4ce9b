# One static library a floor of src/, and one test program a floor of tests/.
#
# Precompiled headers are shared: numerics owns the one of the floors, the test
# support the one of the tests, the workspace the one with Qt. The preset `fuzz`
# builds without them, so that a missing include is noticed there.
#
# With TAVLO_UNITY several files of a floor are compiled as one, which halves a build from
# scratch: names in unnamed namespaces must differ within a floor, and where two clash they
# mean two things or one thing written twice. The presets `debug` and `fuzz` compile each
# file by itself, so that a change costs one file and a missing include is noticed.
set(TAVLO_FLOOR_HEADERS <algorithm> <cmath> <cstdint> <functional> <map> <memory> <optional>
  <string> <string_view> <utility> <variant> <vector>)
set(TAVLO_TEST_HEADERS ${TAVLO_FLOOR_HEADERS} <gtest/gtest.h> <random> <sstream>)
set(TAVLO_QT_HEADERS <QtCore> <QtGui> <QtWidgets>)

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
  if(name STREQUAL "numerics")
    target_precompile_headers(tavlo_${name} PRIVATE ${TAVLO_FLOOR_HEADERS})
  else()
    target_precompile_headers(tavlo_${name} REUSE_FROM tavlo_numerics)
  endif()
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
  target_compile_options(tavlo_${name}_tests PRIVATE ${TAVLO_TEST_OPTIONS})
  target_precompile_headers(tavlo_${name}_tests REUSE_FROM tavlo_test_support)
  gtest_discover_tests(tavlo_${name}_tests
    TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
