// Fuzz target: any bytes against the law of one subject, named where it is built.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include FUZZED_LAW

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(bytes, bytes + size);
  const std::string breach = tavlo::test::BREACH_OF_LAW(std::string_view(text));
  if (breach.empty()) return 0;
  std::fprintf(stderr, "%s\n", breach.c_str());
  std::abort();
}
