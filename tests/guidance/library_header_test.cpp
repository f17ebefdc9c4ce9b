#include "guidance/library_header.h"

#include <gtest/gtest.h>

#include <random>

#include "fuzz/library_law.h"
#include "support/case_list.h"
#include "support/corpus.h"

namespace tavlo {
namespace {

std::string told(const HeaderReading& reading) {
  if (!reading.is_header) return "corrupt";
  std::string text = reading.definition.data_file + "|" + reading.definition.reference_file;
  for (const LibraryColumn& column : reading.definition.columns) {
    text += "|" + column.Name + "/" + std::to_string(static_cast<int>(column.Kind));
    for (const std::string& item : column.Items)
      text += (&item == &column.Items.front() ? "/" : ",") + item;
  }
  for (const ReadFault& fault : reading.faults)
    text += "|" + std::to_string(fault.line) + ": " + fault.what;
  return text;
}

TEST(LibraryHeader, IsReadAsFarAsItGoes) {
  for (const auto& row : test::case_list("library_headers.txt"))
    EXPECT_EQ(told(read_library_header(row[0])) + (row[1].ends_with(' ') ? " " : ""), row[1])
        << row[0];
}

TEST(LibraryHeader, IsReadNoFurtherThanItsLimits) {
  std::string text = "[Library Header File]\n[column definition]\n3\n";
  for (const char* const name : {"A", "B", "C"}) {
    text += std::string(name) + "\n2\n60000\n";
    for (int i = 0; i < 60'000; ++i) text += "item\n";
  }
  const HeaderReading reading = read_library_header(text);
  ASSERT_EQ(reading.definition.columns.size(), 2U);
  EXPECT_EQ(reading.definition.columns[1].Items.size(), 40'000U);
  EXPECT_EQ(reading.faults.front().what, "only 100000 items are read");
  EXPECT_LE(reading.faults.size(), 20U);
}

TEST(LibraryHeader, RefusesToWriteWhatWouldBeReadOtherwise) {
  const LibraryDefinition good{"a.csv", "b.csv", {{"A", ColumnKind::only_list, {"x", "y z"}}}};
  ASSERT_FALSE(find_unwritable(good));
  EXPECT_EQ(read_library_header(write_library_header(good)).definition, good);
  for (const char* const bad :
       {"'x", " x", "x ", "x\ny", "[Column Definition]", "\xFF", "\uFEFFx"}) {
    auto name = good, item = good, file = good;
    name.columns[0].Name = item.columns[0].Items[1] = file.data_file = bad;
    for (const LibraryDefinition& definition : {name, item, file})
      EXPECT_TRUE(find_unwritable(definition)) << bad;
  }
  auto empty = good;
  empty.columns[0].Items[0] = "";
  EXPECT_EQ(find_unwritable(empty), "Field 1 (A) has an empty item.");
  empty.columns[0] = {};
  EXPECT_EQ(find_unwritable(empty), "Field 1 has no name.");
}

TEST(LibraryHeader, KeepsItsLawWhateverItIsMadeOf) {
  const char* const pieces[] = {"[Library Header File]\n",
                                "[library files]\n",
                                "[column definition]\n",
                                "[end library header file]\n",
                                "2\n",
                                "1\n",
                                "0\n",
                                "3\n",
                                "name\n",
                                "'x\n",
                                "a,\"b\"\"c\",d\n",
                                "\"",
                                ",",
                                "\n",
                                "\r",
                                " ",
                                "Valve",
                                "\xE9",
                                "\"x\ny\",1\n"};
  std::mt19937 random(11);
  for (int i = 0; i < 4000; ++i) {
    std::string text = i % 2 == 0 ? pieces[0] : "";
    for (auto k = random() % 40; k > 0; --k) text += pieces[random() % std::size(pieces)];
    ASSERT_EQ(test::breach_of_library_law(text), "") << text;
  }
  test::expect_corpus_keeps("library", test::breach_of_library_law);
}

TEST(DefaultColumns, HaveTheBuiltInLists) {
  const auto columns = default_columns();
  std::string kinds;
  for (const LibraryColumn& column : columns)
    kinds += std::to_string(static_cast<int>(column.Kind));
  EXPECT_EQ(kinds, "00022222000000022220");
  const std::size_t sizes[] = {68, 43, 11, 15, 21};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(columns[3 + i].Items.size(), sizes[i]);
  EXPECT_EQ(analysis_sources().size(), 37U);
  int headings = 0;
  for (int i = 0; i < 37; ++i) headings += is_heading(static_cast<AnalysisSource>(i)) ? 1 : 0;
  EXPECT_EQ(headings, 3);
}

}  // namespace
}  // namespace tavlo
