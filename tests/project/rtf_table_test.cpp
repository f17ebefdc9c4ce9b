#include "project/rtf_table.h"

#include <gtest/gtest.h>

#include <array>

#include "project/rich_text.h"

namespace tavlo {
namespace {

TEST(RtfTable, StandsOnLinesOfItsOwnWithAHeadForEachRow) {
  const std::array widths = {900, 600};
  const TableRows rows = {{"a{b}", "é"}, {"c"}};
  const std::string head = "\\trowd\\trqc\\trgaph108\\trleft36\\cellx900\\cellx1500\\pard\\intbl";
  const std::string table = RTF_Table(rows, widths, RowAlignment::centred);
  EXPECT_EQ(table, "\\par " + head + " a\\{b\\}\\cell \\'e9\\cell\\row" + head +
                       " c\\cell \\cell\\row\\pard\\par ");
  RichText log;
  log.append_rtf("before" + table + "behind");
  EXPECT_EQ(log.plain(), "before\na{b}\té\nc\t\n\nbehind");
  EXPECT_EQ(RTF_Table({}, widths, RowAlignment::left), "");
}

}  // namespace
}  // namespace tavlo
