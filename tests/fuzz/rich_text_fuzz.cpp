// Fuzz target: any bytes as the log of a project. The corpus is in corpus/rich_text.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/rich_text_law.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(bytes, bytes + size);
  const std::string breach = tavlo::test::breach_of_rich_text_law(std::string_view(text));
  if (breach.empty()) return 0;
  std::fprintf(stderr, "%s\n", breach.c_str());
  std::abort();
}
