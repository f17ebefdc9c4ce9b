// Fuzz target: any bytes as a chart profile. The corpus is in corpus/chart_section.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/chart_section_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(bytes, bytes + size);
  const std::string breach = tavlo::test::breach_of_chart_law(text);
  if (breach.empty()) return 0;
  std::fprintf(stderr, "%s\n", breach.c_str());
  std::abort();
}
