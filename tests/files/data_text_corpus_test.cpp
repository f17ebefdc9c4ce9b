// Replays the corpus of the data text's fuzz target.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/data_text_law.h"

namespace tavlo {
namespace {

TEST(DataTextCorpus, EveryFileKeepsTheLaw) {
  int files = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(TAVLO_TEST_DATA "/../fuzz/corpus/data_text")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(test::breach_of_data_text_law(bytes), "") << entry.path();
    ++files;
  }
  EXPECT_GE(files, 10);
}

}  // namespace
}  // namespace tavlo
