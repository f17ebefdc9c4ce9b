// Fuzz target: any bytes as a project file. The corpus is in corpus/project_file.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/project_file_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(bytes, bytes + size);
  const std::string breach = tavlo::test::breach_of_project_law(text);
  if (breach.empty()) return 0;
  std::fprintf(stderr, "%s\n", breach.c_str());
  std::abort();
}
