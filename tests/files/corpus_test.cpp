// Replays the corpora of the fuzz targets.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/chart_section_law.h"
#include "fuzz/data_text_law.h"
#include "fuzz/foreign_file_law.h"
#include "fuzz/project_file_law.h"
#include "fuzz/rich_text_law.h"
#include "fuzz/settings_file_law.h"

namespace tavlo {
namespace {

using Law = std::string (*)(std::string_view bytes);

TEST(Corpus, EveryFileKeepsItsLaw) {
  const std::pair<std::string, Law> corpora[] = {{"chart_section", test::breach_of_chart_law},
                                                 {"data_text", test::breach_of_data_text_law},
                                                 {"project_file", test::breach_of_project_law},
                                                 {"foreign_file", test::breach_of_foreign_law},
                                                 {"settings_file", test::breach_of_settings_law},
                                                 {"rich_text", test::breach_of_rich_text_law}};
  for (const auto& [name, breach_of_law] : corpora) {
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
}

}  // namespace
}  // namespace tavlo
