#include "guidance/library.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "files/disk_files.h"
#include "guidance/library_list.h"
#include "support/case_list.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

struct LibraryTest : testing::Test {
  /// A header of the columns A and B, and Cause with one item.
  static std::string header(const std::string& data_file) {
    return "[Library Header File]\n[library files]\n1\n" + data_file +
           "\n[column definition]\n3\nA\n2\n0\nB\n3\n1\nb2\nCause\n2\n1\nown\n";
  }

  std::string& file(const std::string& name) { return files.files["/lib/" + name]; }

  Library open() {
    LibraryOpening opening = open_library(files, "/lib");
    EXPECT_EQ(opening.fault, HeaderFault::none);
    return std::move(opening.library);
  }

  static std::vector<std::string> fields(const Library& library, std::size_t row) {
    std::vector<std::string> found;
    library.rows.fields(row, found);
    return found;
  }

  test::MemoryFiles files;
};

TEST_F(LibraryTest, HasBuiltInListsWhereNoFileHoldsOthers) {
  file("libcause.txt") = "x\n";
  file("libcause-Harlo.txt") = " one \r\n\r\ntwo\r\n";
  file("libequip.txt") = "";
  const auto before = files.files;
  const Library library = open();
  EXPECT_EQ(files.files, before);
  const auto& columns = library.definition.columns;
  EXPECT_EQ(columns[3].Items.size(), 68U) << "libdevce.txt is not there";
  EXPECT_TRUE(columns[4].Items.empty());
  EXPECT_EQ(columns[5].Items, (std::vector<std::string>{"one", "two"}));
  EXPECT_FALSE(library.is_unsaved());
  EXPECT_TRUE(library.header_path.empty());
}

TEST_F(LibraryTest, TakesTheFirstHeaderByNameAndItsData) {
  files.folders.insert("/lib/QMWbLibDef.0");
  file("QMWbLibDef.a~") = "[Library Header File]\n";
  file("qmwblibdefb.txt") = header("../elsewhere/x.csv");
  file("QMWbLibDefC.txt") = header("/data/x.csv");
  files.files["/data/x.csv"] = "A, B ,Cause\n1,2,3\n4,5,6\n7,,8\n9";
  Library library = open();
  EXPECT_EQ(library.header_path, "/lib/QMWbLibDefC.txt");
  EXPECT_TRUE(library.notes.empty());
  EXPECT_EQ(library.first_row(), 1U);
  EXPECT_EQ(library.rows.count(), 5U);
  EXPECT_EQ(library.definition.columns[2].Items, std::vector<std::string>{"own"});
  EXPECT_EQ(choices_of(library, 1), (std::vector<std::string>{"b2", "2", "5"}));
  EXPECT_EQ(choices_of(library, 0), std::vector<std::string>{});
  EXPECT_EQ(choices_of(library, 2), std::vector<std::string>{"own"});
  files.files.erase("/lib/QMWbLibDefC.txt");
  library = open();
  EXPECT_EQ(library.data_notes,
            std::vector<std::string>{"Data file '../elsewhere/x.csv': there is no such file."});
  file("QMWbLibDefA.txt") = "something else";
  EXPECT_EQ(open_library(files, "/lib").fault, HeaderFault::corrupt);
}

TEST_F(LibraryTest, SaysWhereTheDataDoNotMatchTheColumns) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"1,2,3\n", ""},
      {"1,2,3\n1,2\n1,2,3,4\n",
       "Row 2 has 2 fields; the library has 3 columns. So it is with 2 rows."},
      {"A,B,Cause\n1\n", "Row 1 has 1 fields; the library has 3 columns."},
      {"B,A,Cause\n1,2,3\n",
       "The first row of the data file names other columns, or these in another order."},
  };
  for (const auto& [data, note] : cases) {
    file("QMWbLibDef.txt") = header("x.csv");
    file("x.csv") = data;
    const Library library = open();
    EXPECT_EQ(library.data_notes, note.empty() ? std::vector<std::string>{} : std::vector{note});
  }
  file("x.csv") = std::string("1,\0,3\n", 6);
  EXPECT_EQ(open().data_notes.size(), 1U);
  EXPECT_TRUE(open().data_path.empty());
}

TEST_F(LibraryTest, SavesWhatIsReadBackAndUnprotectsThatFileAlone) {
  file("QMWbLibDef.txt") = header("x.csv");
  file("x.csv") = "1,2,3\n";
  files.read_only = {"/lib/QMWbLibDef.txt", "/lib/x.csv"};
  Library library = open();
  EXPECT_EQ(files.read_only.size(), 2U);
  std::swap(library.definition.columns[0], library.definition.columns[2]);
  EXPECT_TRUE(library.is_unsaved());
  ASSERT_TRUE(save_library_header(files, library.header_path, library));
  EXPECT_FALSE(library.is_unsaved());
  EXPECT_EQ(files.read_only, std::set<std::string>{"/lib/x.csv"});
  EXPECT_EQ(open().definition, library.definition);
  EXPECT_EQ(file("QMWbLibDef.txt~"), header("x.csv"));
  int refusals = 0;
  for (int operation = 1; operation <= 3; ++operation) {
    library.definition.columns[0].Name = "new" + std::to_string(operation);
    const auto before = files.files;
    files.fail_at(operation);
    if (save_library_header(files, library.header_path, library)) continue;
    EXPECT_EQ(files.files, before);
    EXPECT_TRUE(library.is_unsaved());
    ++refusals;
  }
  EXPECT_EQ(refusals, 1);
}

TEST_F(LibraryTest, NamesADataFileRelativeToItsFolder) {
  file("QMWbLibDef.txt") = header("x.csv");
  Library library = open();
  name_data_file(library, "/lib/y.csv");
  EXPECT_EQ(library.definition.data_file, "y.csv");
  EXPECT_EQ(library.definition.reference_file, "y.csv");
  library.definition.reference_file = "ref.csv";
  name_data_file(library, "/other/y.csv");
  EXPECT_EQ(library.definition.data_file, "/other/y.csv");
  EXPECT_EQ(library.definition.reference_file, "ref.csv");
  EXPECT_EQ(split_path("C:\\a\\b.csv").folder, "C:\\a");
  EXPECT_EQ(split_path("b.csv").name, "b.csv");
}

TEST_F(LibraryTest, AddsARowToWhatTheFileHoldsThen) {
  const std::vector<std::string> row = {"x, y", "q", "c"};
  file("QMWbLibDef.txt") = header("x.csv");
  file("x.csv") = "1,2,3";
  Library library = open();
  ASSERT_TRUE(add_library_row(files, row, library));
  EXPECT_EQ(file("x.csv"), "1,2,3\n\"x, y\",q,c\n");
  file("x.csv") += "by,another,program\n";
  ASSERT_TRUE(add_library_row(files, row, library));
  EXPECT_EQ(library.rows.count(), 4U);
  EXPECT_EQ(fields(library, 2)[1], "another");
  EXPECT_EQ(fields(library, 3), row);
  file("x.csv") = "gr\xF6n,2,3\n";
  library = open();
  ASSERT_TRUE(add_library_row(files, row, library));
  EXPECT_EQ(file("x.csv"), "grön,2,3\n\"x, y\",q,c\n");
  EXPECT_EQ(file("x.csv~"), "gr\xF6n,2,3\n");
  EXPECT_EQ(open().rows.count(), 2U);
  for (int operation = 1;; ++operation) {
    const auto before = files.files;
    const std::size_t rows = library.rows.count();
    files.fail_at(operation);
    if (add_library_row(files, row, library)) break;
    EXPECT_EQ(files.files, before);
    EXPECT_EQ(library.rows.count(), rows);
    ASSERT_LT(operation, 10);
  }
  EXPECT_FALSE(add_library_row(files, {std::string(70'000, 'x'), "", ""}, library));
}

TEST_F(LibraryTest, IsTheLastOfTheListThatIsThere) {
  EXPECT_FALSE(last_library(files, read_library_list(files, "/ini")));
  files.files["/ini/QMWLib.ini"] = "/lib/\r\n\r\n  /b/QMWbLibDef.txt \r\n/gone\r\n";
  files.files["/b/QMWbLibDef.txt"] = "anything";
  file("QMWbLibDef.txt") = header("");
  auto list = read_library_list(files, "/ini");
  EXPECT_EQ(list, (std::vector<std::string>{"/lib", "/b", "/gone"}));
  EXPECT_EQ(last_library(files, list), "/b");
  ASSERT_TRUE(remember_library(files, "/ini", "/lib"));
  list = read_library_list(files, "/ini");
  EXPECT_EQ(list, (std::vector<std::string>{"/b", "/gone", "/lib"}));
  files.files["/ini/QMWLib.ini"] = std::string(std::size_t{5} << 20, 'x');
  EXPECT_FALSE(remember_library(files, "/ini", "/b")) << "the list would be lost";
}

/// What comes with the program must be plausible, whole, and marked as what it is.
TEST(SampleLibrary, HoldsFortyExamples) {
  DiskFiles disk;
  const LibraryOpening opening = open_library(disk, TAVLO_EXAMPLES "/library");
  const Library& library = opening.library;
  ASSERT_TRUE(library.notes.empty() && library.data_notes.empty());
  EXPECT_EQ(library.definition.columns, default_columns());
  ASSERT_EQ(library.rows.count() - library.first_row(), 40U);
  std::vector<std::string> row;
  std::set<std::string> titles;
  for (std::size_t i = 1; i <= 40; ++i) {
    library.rows.fields(i, row);
    titles.insert(row[1]);
    for (std::size_t column = 3; column <= 7; ++column) {
      const auto& items = library.definition.columns[column].Items;
      EXPECT_NE(std::find(items.begin(), items.end(), row[column]), items.end()) << row[column];
    }
    for (const std::size_t range : {12U, 13U}) {
      const std::string& text = row[range];
      const std::size_t first = text.find('/'), second = text.rfind('/');
      const double low = test::number_in(text);
      const double middle = test::number_in(text.substr(first + 1));
      const double high = test::number_in(text.substr(second + 1));
      EXPECT_TRUE(first < second && 0 < low && low < middle && middle < high) << text;
    }
    EXPECT_TRUE(row[15].starts_with("Example")) << row[1];
    const std::size_t slash = row[19].find('/');
    EXPECT_GT(test::number_in(row[19]), test::number_in(row[19].substr(slash + 1))) << row[1];
  }
  EXPECT_GE(titles.size(), 39U);
}

}  // namespace
}  // namespace tavlo
