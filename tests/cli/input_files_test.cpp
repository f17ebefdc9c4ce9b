#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program_run.h"

namespace tavlo {
namespace {

using InputFiles = test::CliTest;
using test::ProgramRun;

TEST_F(InputFiles, WhatADoubtfulTextMeansIsSaidByOptions) {
  folder.write("d", "1071,8\n1069,3\n");
  folder.write("f", "Std,Zustand\n4,ok\n5,defekt\n");
  const std::pair<std::string, int> cases[] = {
      {"d --decimal comma", 2},
      {"d --decimal point", 11},
      {"f --columns x=std,status=Zustand --failed defekt", 1}};
  for (const auto& [words, failures] : cases) {
    const ProgramRun run = folder.shell("$CLI rank --json " + words);
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.json().at(0).at("failures"), failures) << words;
  }
}

// What a pipe gives is what a file gives.
TEST_F(InputFiles, WhateverGivesBytesIsRead) {
  std::string text = "5\n7\n";
  while (text.size() < 200'000) text += "# more than a pipe holds\n";
  folder.write("d", text + ">9\n");
  const std::string fits = folder.run({"fit", "d", "--json"}).out;
  const std::string answers = fits.substr(fits.find("\"set\""));
  for (const char* line : {"$CLI fit <(cat d) --json", "cat d | $CLI fit /dev/stdin --json",
                           "$CLI fit /dev/fd/7 --json 7< d", "cat d | $CLI fit - --json",
                           "mkfifo p; cat d > p & $CLI fit p --json"}) {
    const ProgramRun run = folder.shell(line);
    EXPECT_EQ(run.code, 0) << line << run.err;
    EXPECT_TRUE(run.out.ends_with(answers)) << line << run.out;
  }
}

// By whatever name the data are named, an output doesn't overwrite them.
TEST_F(InputFiles, AnOutputIsNoInput) {
  folder.write("d.txt", "5\n7\n");
  folder.write("d.wmf", "5\n7\n");
  std::filesystem::create_symlink("d.txt", folder.path("link.txt"));
  std::filesystem::create_hard_link(folder.path("d.txt"), folder.path("hard.txt"));
  for (const char* line :
       {"$CLI fit d.txt --log d.txt", "$CLI fit - --log d.txt < d.txt",
        "$CLI fit d.txt --log link.txt", "$CLI fit link.txt --log ./d.txt",
        "$CLI fit - --log hard.txt < d.txt", "$CLI fit /dev/stdin --log link.txt < d.txt",
        "$CLI fit d.wmf --chart d.wmf", "$CLI chart - d.wmf < d.wmf", "$CLI fit - - < d.txt",
        "$CLI chart d.txt d.wmf ./d.wmf"}) {
    EXPECT_EQ(folder.shell(line).code, 2) << line;
    EXPECT_EQ(folder.read("d.txt") + folder.read("d.wmf"), "5\n7\n5\n7\n") << line;
  }
  EXPECT_EQ(folder.shell("$CLI fit - --log other.txt < d.txt").code, 0);
}

TEST_F(InputFiles, OutputThatCannotBeWrittenIsAFileFault) {
  const ProgramRun full = folder.shell("seq 20000 > d; $CLI rank d > /dev/full");
  EXPECT_EQ(full.code, 3);
  EXPECT_EQ(full.err, "tavlo-cli: standard output can't be written: the disk is full\n");
  const ProgramRun closed = folder.shell("$CLI rank d | head -c 10; echo ${PIPESTATUS[0]}");
  EXPECT_TRUE(closed.out.ends_with("3\n")) << closed.out;
  EXPECT_NE(closed.err.find("its reader has gone away"), std::string::npos) << closed.err;
}

TEST_F(InputFiles, AnInterruptedRunEndsAtOnceAndLeavesNothing) {
  ASSERT_EQ(::mkfifo(folder.path("p").c_str(), 0600), 0);  // that nobody will write to
  for (const char* line : {"timeout --preserve-status -s INT 0.3 $CLI fit p --log log.txt",
                           "sleep 1 | timeout --preserve-status -s INT 0.3 $CLI batch"}) {
    const ProgramRun run = folder.shell(line);
    EXPECT_EQ(run.code, 130) << line;
    EXPECT_EQ(run.err, "tavlo-cli: interrupted\n");
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path("log.txt")));
}

// A name is data: what it holds must not reach a terminal or a file raw.
TEST_F(InputFiles, ANameWithControlBytesIsShownHarmless) {
  const std::string name = "a\x1B[31m\x07\xC2\x9B\xFF";
  folder.write(name, "5\n7\n");
  const ProgramRun fit = folder.run({"fit", name});
  EXPECT_TRUE(fit.out.starts_with("a\\x1B[31m\\x07\\xC2\\x9B\\xFF: 2 units")) << fit.out;
  const ProgramRun json = folder.run({"fit", name, "--json"});
  EXPECT_EQ(json.json().at(0).at("file"), "a\x1B[31m\x07\xC2\x9B\uFFFD");
  for (const std::string& text :
       {json.out, folder.run({"fit", name + "x"}).err, folder.run({"fit", "--x\x1B"}).err}) {
    EXPECT_EQ(text.find('\x1B'), std::string::npos) << text;
    EXPECT_EQ(text.find("\xC2\x9B"), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace tavlo
