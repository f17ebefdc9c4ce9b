#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program_run.h"

namespace tavlo {
namespace {

using test::CliFolder;
using test::ProgramRun;

/// What the command line may hold to refuse a file, its 256 MiB included.
constexpr long most_kilobytes = 600 * 1024;

void expect_file_fault(const CliFolder& folder, const std::string& file, const std::string& what) {
  for (const char* command : {"fit", "rank"}) {
    const ProgramRun run = folder.run({command, file});
    EXPECT_EQ(run.code, 3) << file;
    EXPECT_EQ(run.err, "tavlo-cli: " + file + what + "\n");
    EXPECT_EQ(run.out, "");
    EXPECT_LT(run.peak_kilobytes, most_kilobytes) << file;
  }
}

TEST(InputFiles, EachBadTextIsRefusedWithItsLine) {
  using namespace std::string_literals;
  struct Case {
    std::string bytes;
    const char* what;
  };
  const Case cases[] = {
      {"", ":1: the file is empty"},
      {" \n\n  \n", ":4: there is no data, only blank lines or remarks"},
      {"time,fails\n5,1\n6,one\n", ":3: 'one' is not a number"},
      {"5\nsix\n", ":2: 'six' is not a number"},
      {"5\n0\n", ":2: a time can't be 0"},
      {"x,status\n5,F\n-3,F\n", ":3: a time can't be negative"},
      {"5\nNaN\n", ":2: 'NaN' is not a number"},
      {"5\n1e999\n", ":2: the time '1e999' is out of range (1.2e-38 to 3.4e+38)"},
      {"5x1e15\n", ":1: the count '1e15' is out of range (at most 10000000 units)"},
      {"x,status\n", ":1: no rows follow the header line"},
      {"\xFF\xFE"
       "5\0\n\0"s,
       ":1: this is UTF-16 text; save it as UTF-8"},
      {"5\n6\n\0\n"s, ":3: there is a NUL byte; this is no text"},
      {"5\rsix\r", ":2: 'six' is not a number"}};
  const CliFolder folder;
  for (const Case& row : cases) {
    folder.write("data", row.bytes);
    expect_file_fault(folder, "data", row.what);
  }
}

TEST(InputFiles, WhatIsNoFileIsRefusedAtOnce) {
  const CliFolder folder;
  folder.write("zeros", "");
  std::filesystem::resize_file(folder.path("zeros"), std::uintmax_t{1} << 30);
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  expect_file_fault(folder, "zeros", ": the file is too large (at most 256 MiB)");
  expect_file_fault(folder, "pipe", ": this is a pipe, not a file");
  expect_file_fault(folder, ".", ": this is a folder, not a file");
  expect_file_fault(folder, "/dev/zero", ": this is a device, not a file");
  expect_file_fault(folder, "missing", ": there is no such file or folder");
}

// A file of many blank or zero bytes below the limit is read in bounded memory.
TEST(InputFiles, LargeFilesOfNothingAreRefusedInBoundedMemory) {
  const CliFolder folder;
  folder.write("zeros", "");
  std::filesystem::resize_file(folder.path("zeros"), std::uintmax_t{1} << 27);
  expect_file_fault(folder, "zeros", ":1: there is a NUL byte; this is no text");
}

TEST(InputFiles, StandardInputIsAFileOfItsOwn) {
  const CliFolder folder;
  EXPECT_EQ(folder.run({"rank", "-", "--json"}, "5\n>6\n").json().at(0).at("units"), 2);
  EXPECT_EQ(folder.run({"rank", "-"}, "5\nx\n").err, "tavlo-cli: -:2: 'x' is not a number\n");
}

TEST(InputFiles, ABadFileDoesNotKeepTheOthersFromBeingDone) {
  const CliFolder folder;
  folder.write("one", "5\n");
  folder.write("two", "5\n6\n");
  const ProgramRun run = folder.run({"fit", "missing", "one", "two", "--json"});
  EXPECT_EQ(run.code, 3);  // outweighs the refused fit of one point
  const auto lines = run.json();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].at("error"), "missing: there is no such file or folder");
  EXPECT_EQ(lines[1].at("fits")[0].at("status"), 0);
  EXPECT_EQ(lines[2].at("fits")[0].at("status"), 1);
}

}  // namespace
}  // namespace tavlo
