#include "guidance/library_rows.h"

#include <csv.h>
#include <gtest/gtest.h>

#include <random>

#include "guidance/library_search.h"

namespace tavlo {
namespace {

using Row = std::vector<std::string>;

std::vector<Row> rows_of(const std::string& bytes) {
  LibraryRows rows;
  EXPECT_FALSE(rows.read(bytes)) << bytes;
  std::vector<Row> all(rows.count());
  for (std::size_t i = 0; i < all.size(); ++i) rows.fields(i, all[i]);
  return all;
}

TEST(LibraryRows, AreCutAtCommasOutsideOfMarks) {
  const std::vector<std::pair<std::string, std::vector<Row>>> cases = {
      {"", {}},
      {"\n\r\n\n", {}},
      {"a", {{"a"}}},
      {",\n", {{"", ""}}},
      {" a ,b\r\n\r\nc,d", {{" a ", "b"}, {"c", "d"}}},
      {"a\rb\r\rc", {{"a"}, {"b"}, {"c"}}},
      {"\"a,b\", \"c \"\"d\"\"\",\"\"\ne", {{"a,b", "c \"d\"", ""}, {"e"}}},
      {"\"one\ntwo\",x\ny", {{"one\ntwo", "x"}, {"y"}}},
      {"3\" pipe,\"1\" x,2\n", {{"3\" pipe", "\"1\" x", "2"}}},
      {"\"a\" ,\"b\"\r\n", {{"a", "b"}}},
      {"\"never closed,x\ny,z\n", {{"\"never closed", "x"}, {"y", "z"}}},
      {"\xEF\xBB\xBFgr\xC3\xB6\xC3\x9F,1", {{"größ", "1"}}},
      {"gr\xF6\xDF,1", {{"größ", "1"}}},
      {{"\xFF\xFE\x61\0,\0\x62\0", 8}, {{"a", "b"}}},
  };
  for (const auto& [text, rows] : cases) EXPECT_EQ(rows_of(text), rows) << text;
}

TEST(LibraryRows, RefuseWhatIsNoText) {
  LibraryRows rows;
  EXPECT_TRUE(rows.read(std::string("a,\0b\n", 5)));
  EXPECT_EQ(rows.count(), 0U);
  const auto fault = rows.read("\"a\nb\n\"\n" + std::string(70'000, 'x') + "\n");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 4);
  EXPECT_FALSE(rows.read("\"" + std::string(60'000, 'x') + "\n" + std::string(60'000, 'y') + "\""));
  EXPECT_EQ(rows.count(), 2U) << "a mark that is not closed within reach is a character";
}

/// Written by other hands.
TEST(LibraryRows, ReadWhatTheCsvLibraryWrites) {
  const char* const pieces[] = {"a", ",", "\"", "\n", " ", "xyz", "\xC3\xA9", "'"};
  std::mt19937 random(3);
  std::string text;
  std::vector<Row> rows(500);
  for (Row& row : rows) {
    row.resize(1 + random() % 6);
    for (std::string& field : row) {
      for (auto k = random() % 5; k > 0; --k) field += pieces[random() % std::size(pieces)];
      std::string written(2 * field.size() + 2, '\0');
      written.resize(csv_write(written.data(), written.size(), field.data(), field.size()));
      text += (&field == &row.front() ? "" : ",") + written;
    }
    text += "\r\n";
  }
  EXPECT_EQ(rows_of(text), rows);
}

TEST(LibraryRows, TakeARowBehindTheLast) {
  for (const char* const text : {"", "a,b\n", "a,b", "a,b\r\n"}) {
    LibraryRows rows;
    ASSERT_FALSE(rows.read(text));
    const std::string row = write_library_row(Row{"x, y", "say \"no\"\nnow"});
    const std::string file = text + rows.continuation(row);
    rows.add(row);
    EXPECT_EQ(rows.whole_text(), file);
    EXPECT_EQ(rows_of(file).back(), (Row{"x, y", "say \"no\" now"}));
    EXPECT_EQ(rows_of(file).size(), rows.count());
  }
  EXPECT_EQ(rows_of(write_library_row(Row{""})).size(), 1U);
}

TEST(LibrarySearch, FindsRowsThatHoldEachWord) {
  LibraryRows rows;
  ASSERT_FALSE(
      rows.read("Name,Cause\n"
                "Gear,\"wear, by dust\"\n"
                "Bearing -Ball,FATIGUE\n"
                "Größe,\"3\"\" \u0160KODA\"\n"
                "gearbox,fatigue of a gear\n"));
  const std::vector<std::pair<std::string, std::vector<std::uint32_t>>> cases = {
      {"", {1, 2, 3, 4}},
      {" \t ", {1, 2, 3, 4}},
      {"gear", {1, 4}},
      {"GEAR fatigue", {4}},
      {"fatigue  gear box", {4}},
      {"ball FATIGUE", {2}},
      {"wear,", {1}},
      {"gear,", {}},  // the comma between two fields is in neither
      {",", {1}},
      {"3\"", {3}},
      {"\"", {3}},
      {"GRÖSSE", {}},
      {"gRÖß \u0161koda", {3}},
      {"name", {}},
      {"q", {}},
      {"-", {2}},
  };
  for (const auto& [words, found] : cases)
    EXPECT_EQ(find_library_rows(rows, 1, words), found) << words;
  std::string text;
  for (int i = 0; i < 300; ++i) text += i % 100 == 7 ? "here\n" : "nothing, far and wide\n";
  ASSERT_FALSE(rows.read(text));
  EXPECT_EQ(find_library_rows(rows, 0, "HERE"), (std::vector<std::uint32_t>{7, 107, 207}));
}

}  // namespace
}  // namespace tavlo
