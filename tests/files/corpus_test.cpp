// Replays the corpora of the fuzz targets.
#include "support/corpus.h"

#include <gtest/gtest.h>

#include "fuzz/chart_section_law.h"
#include "fuzz/data_text_law.h"
#include "fuzz/foreign_file_law.h"
#include "fuzz/project_file_law.h"
#include "fuzz/rich_text_law.h"
#include "fuzz/settings_file_law.h"

namespace tavlo {
namespace {

TEST(Corpus, EveryFileKeepsItsLaw) {
  test::expect_corpus_keeps("chart_section", test::breach_of_chart_law);
  test::expect_corpus_keeps("data_text", test::breach_of_data_text_law);
  test::expect_corpus_keeps("project_file", test::breach_of_project_law);
  test::expect_corpus_keeps("foreign_file", test::breach_of_foreign_law);
  test::expect_corpus_keeps("settings_file", test::breach_of_settings_law);
  test::expect_corpus_keeps("rich_text", test::breach_of_rich_text_law);
}

}  // namespace
}  // namespace tavlo
