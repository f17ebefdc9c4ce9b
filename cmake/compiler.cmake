# Flags of the whole project. No contraction and no -march: one fused
# multiply-add flips a decision of a minimiser, and two machines then disagree.
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)  # false alarms on std::string (GCC bug 105651)
endif()
if(TAVLO_WERROR)
  add_compile_options(-Werror)
endif()

if(TAVLO_SANITIZE)
  add_compile_options(-fsanitize=${TAVLO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TAVLO_SANITIZE})
endif()

if(TAVLO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)  # the fuzzer follows what the core does
endif()
