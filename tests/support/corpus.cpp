#include "support/corpus.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tavlo::test {

void expect_corpus_keeps(const std::string& name, Law breach_of_law) {
  int files = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(TAVLO_TEST_DATA "/../fuzz/corpus/" + name)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(breach_of_law(bytes), "") << entry.path();
    ++files;
  }
  EXPECT_GE(files, 10) << name;
}

}  // namespace tavlo::test
