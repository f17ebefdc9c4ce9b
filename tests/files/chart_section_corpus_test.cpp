// Replays the corpus of the chart section's fuzz target.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/chart_section_law.h"

namespace tavlo {
namespace {

TEST(ChartSectionCorpus, EveryFileKeepsTheLaw) {
  int files = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(TAVLO_TEST_DATA "/../fuzz/corpus/chart_section")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(test::breach_of_chart_law(bytes), "") << entry.path();
    ++files;
  }
  EXPECT_GE(files, 10);
}

}  // namespace
}  // namespace tavlo
