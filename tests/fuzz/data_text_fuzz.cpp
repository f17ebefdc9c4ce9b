// Fuzz target: any bytes as a data file. The corpus is in corpus/data_text.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/data_text_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(bytes, bytes + size);
  const std::string breach = tavlo::test::breach_of_data_text_law(text);
  if (breach.empty()) return 0;
  std::fprintf(stderr, "%s\n", breach.c_str());
  std::abort();
}
