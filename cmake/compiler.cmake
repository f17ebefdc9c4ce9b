# Flags of the whole project. No contraction and no -march: one fused
# multiply-add flips a decision of a minimiser, and two machines then disagree.
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fpch-preprocess)  # lets ccache keep what uses a precompiled header
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms on std::string (GCC bug 105651); the sanitizers find the true ones.
  add_compile_options(-Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread
    -Wno-array-bounds)
endif()
if(TAVLO_UNITY AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wshadow=local)  # a name of another file in the batch is none of ours
else()
  add_compile_options(-Wshadow)
endif()
if(TAVLO_WERROR)
  add_compile_options(-Werror)
endif()

if(TAVLO_SANITIZE)
  add_compile_options(-fsanitize=${TAVLO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TAVLO_SANITIZE})
endif()

if(TAVLO_PLAIN_THREADS)
  add_compile_definitions(TAVLO_PLAIN_THREADS)
endif()

if(TAVLO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)  # the fuzzer follows what the core does
endif()

# A test is compiled once and runs once: full optimisation of its own code costs a
# third of the whole build and saves seconds.
# -fPIC, as Qt wants it and libraries have it: all can use the same headers then.
set(TAVLO_TEST_OPTIONS -fPIC)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  list(APPEND TAVLO_TEST_OPTIONS -O1)
endif()
