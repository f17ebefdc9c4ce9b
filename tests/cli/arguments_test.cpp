#include <gtest/gtest.h>

#include "program_run.h"

namespace tavlo {
namespace {

using Arguments = test::CliTest;
using test::ProgramRun;

struct UsageCase {
  std::vector<std::string> arguments;
  const char* message;
};

TEST_F(Arguments, WrongUsageEndsWithTwoAndSaysWhy) {
  const UsageCase cases[] = {
      {{}, "a command is required"},
      {{"frobnicate", "x"}, "there is no command 'frobnicate'"},
      {{"fit"}, "FILE is required"},
      {{"fit", "x", "--wrong"}, "--wrong"},
      {{"fit", "x", "--model", "W9P"}, "'W9P' is no model"},
      {{"fit", "x", "--method", "ls"}, "'ls' is no method"},
      {{"fit", "x", "--ranks", "mean"}, "'mean' is no kind of ranks"},
      {{"fit", "x", "--at", "5,now"}, "'now' is not a number"},
      {{"fit", "x", "--model", "W2P,Wb"}, "Wb needs its slope"},
      {{"fit", "x", "--size", "1000"}, "'1000' is no size"},
      {{"fit", "x", "--dpi", "35"}, "'35' is no number of pixels an inch"},
      {{"fit", "x", "--log", "x.doc"}, "must end in .rtf or .txt"},
      {{"fit", "x", "--chart", "x.jpg"}, "must end in .svg, .pdf, .png or .wmf"},
      {{"fit", "x", "--project", "x"}, "not available yet"},
      {{"fit", "x", "y", "--chart", "x.svg"}, "one FILE at a time"},
      {{"batch", "--jobs", "0"}, "'0' is no number of jobs"},
      {{"batch", "x"}, "x"},
      {{"chart", "x"}, "OUT is required"},
      {{"chart", "x", "y"}, "the chart 'y' must end in"},
      {{"chart", "x", "y.svg", "--fit", "W2P"}, "'W2P' is no fit"},
      {{"chart", "x", "y.svg", "--fit", "2:W2P/mle"}, "2:... names a file beyond the only one"},
      {{"chart", "x", "y", "z.svg", "--fit", "3:E/rr"}, "3:... names a file beyond the 2 given"},
      {{"chart", "x", "y", "z.svg", "--fit", "0:E/rr"}, "'0:E/rr' is no fit"},
      {{"chart", "x", "y", "z.svg", "--fit", "b:E/rr"}, "'b:E/rr' is no fit"},
      {{"chart", "x", "y", "z.svg", "--fit", "2:Wb/rr"}, "Wb needs its slope"},
      {{"chart", "-", "x", "-", "y.svg"}, "standard input (-) can be read only once"}};
  for (const UsageCase& row : cases) {
    const ProgramRun run = folder.run(row.arguments);
    EXPECT_EQ(run.code, 2) << row.message;
    EXPECT_TRUE(run.err.starts_with("tavlo-cli: ")) << run.err;
    EXPECT_NE(run.err.find(row.message), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "") << row.message;
  }
}

TEST_F(Arguments, HelpAndVersionEndWell) {
  EXPECT_TRUE(folder.run({"--version"}).out.starts_with("tavlo-cli "));
  for (const char* command : {"", "fit ", "rank ", "chart ", "batch "}) {
    const ProgramRun run = folder.shell("$CLI " + std::string(command) + "--help");
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find(command), std::string::npos) << run.out;
    EXPECT_GT(run.out.size(), 200U);
  }
}

}  // namespace
}  // namespace tavlo
