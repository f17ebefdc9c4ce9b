// Whole lines of the shell, each in a folder of its own: what people ask for, get and are told.
#include <gtest/gtest.h>

#include "program_run.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

TEST(CommandLines, AreAnsweredAsStated) {
  for (const auto& row : test::case_list("command_lines.txt")) {
    const test::ProgramRun run = test::CliFolder().shell(row[0]);
    const std::string printed = run.out + run.err;
    EXPECT_EQ(run.code, std::stoi(row[1])) << row[0] << "\n" << printed;
    for (std::size_t i = 2; i < row.size(); ++i) {
      const char kind = row[i].front();
      const std::string words = row[i].substr(kind == '=' || kind == '!' ? 1 : 0);
      EXPECT_EQ(printed.find(words) == std::string::npos, kind == '!') << row[0] << "\n"
                                                                       << words << "\n"
                                                                       << printed;
      EXPECT_TRUE(kind != '=' || printed == words) << row[0] << "\n" << printed;
    }
  }
}

}  // namespace
}  // namespace tavlo
