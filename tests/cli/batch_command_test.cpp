#include <gtest/gtest.h>

#include <random>

#include "fuzz/json_line_law.h"
#include "program_run.h"
#include "support/case_list.h"
#include "support/corpus.h"

namespace tavlo {
namespace {

using nlohmann::json;
using BatchCommand = test::CliTest;
using test::ProgramRun;

/// Samples of all sizes, some of them hard or impossible to fit.
std::vector<json> random_lines(std::uint64_t seed, int count) {
  std::mt19937_64 random(seed);
  std::weibull_distribution<double> life(1.5, 1000.0);
  const char* const models[] = {"W2P", "N,LN", "W5C", "W3T", "Wb", "FM", "G-"};
  std::vector<json> lines;
  for (int i = 0; i < count; ++i) {
    json line = {
        {"id", i}, {"x", json::array()}, {"fails", json::array()}, {"susps", json::array()}};
    for (std::uint64_t k = 0; k <= random() % 25; ++k) {
      line["x"].push_back(static_cast<double>(static_cast<float>(life(random))));
      const int failed = random() % 4 == 0 ? 0 : 1 + static_cast<int>(random() % 2);
      line["fails"].push_back(failed);
      line["susps"].push_back(failed == 0 ? 1 : 0);
    }
    line["model"] = models[random() % std::size(models)];
    if (line["model"] == "Wb") line["slope"] = 1.75;
    line["method"] = random() % 2 == 0 ? "rr,mle" : "mle";
    line["b_life"] = {1, 10};
    line["at"] = {500};
    lines.push_back(line);
  }
  return lines;
}

std::string text_of(const std::vector<json>& lines) {
  std::string text;
  for (const json& line : lines) text += line.dump() + "\n";
  return text;
}

TEST_F(BatchCommand, ALineGivesWhatItsFileGives) {
  const std::vector<json> lines = random_lines(4, 25);
  const std::vector<json> answers = folder.run({"batch"}, text_of(lines)).json();
  ASSERT_EQ(answers.size(), lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const json& line = lines[i];
    std::string table = "x,fails,susps\n";
    for (std::size_t k = 0; k < line["x"].size(); ++k)
      table += line["x"][k].dump() + "," + line["fails"][k].dump() + "," + line["susps"][k].dump() +
               "\n";
    folder.write("d", table);
    std::vector<std::string> words = {"fit",         "d",        "--json",       "--model",
                                      line["model"], "--method", line["method"], "--b-life",
                                      "1,10",        "--at",     "500"};
    if (line.contains("slope")) words.insert(words.end(), {"--slope", "1.75"});
    json expected = folder.run(words).json().at(0);
    expected.erase("file");
    expected.erase("set");
    expected["id"] = i;
    EXPECT_EQ(answers[i], expected);
  }
}

TEST_F(BatchCommand, AnyNumberOfJobsGivesTheSameBytes) {
  const std::string text = text_of(random_lines(5, 300));
  const ProgramRun one = folder.run({"batch", "--jobs", "1"}, text);
  EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 300);
  for (const char* jobs : {"2", "5"})
    EXPECT_EQ(folder.run({"batch", "--jobs", jobs}, text).out, one.out);
}

TEST_F(BatchCommand, ABadLineIsAnErrorAndTheRunGoesOn) {
  std::string text;
  const auto cases = test::case_list("batch_faults.txt");
  for (const auto& row : cases) text += row[0] + "\n\n \r\n";
  const ProgramRun run = folder.run({"batch"}, text + R"({"id":"last","x":[5,6,9]})");
  EXPECT_EQ(run.code, 1);
  const std::vector<json> answers = run.json();
  ASSERT_EQ(answers.size(), cases.size() + 1) << run.out;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(answers[i].at("id"), json::parse(cases[i][1])) << answers[i];
    EXPECT_NE(answers[i].at("error").get<std::string>().find(cases[i][2]), std::string::npos)
        << answers[i];
  }
  EXPECT_EQ(answers.back().at("fits")[0].at("status"), 1);
  EXPECT_NE(folder.run({"batch"}, std::string(5000, '[') + std::string(5000, ']'))
                .out.find("nested too deeply"),
            std::string::npos);
  EXPECT_EQ(folder.run({"batch"}, "\n\n").out, "");
  EXPECT_EQ(folder.run({"batch"}, "\xEF\xBB\xBF{\"x\":[5,6,9],\"model\":98}").code, 0);
}

// The shell makes the lines: what this process held would count as the child's memory.
TEST_F(BatchCommand, MemoryDoesNotGrowWithLinesNorWithALineTooLong) {
  const ProgramRun many = folder.shell(
      "yes '{\"x\":['$(seq -s, 2000)']}' | head -n 6000 | $CLI batch --jobs 2 | wc -l");  // 60 MB
  EXPECT_EQ(many.out, "6000\n") << many.err;
  EXPECT_LT(many.peak_kilobytes, 40 * 1024 * test::memory_factor);
  const ProgramRun run = folder.shell(
      "good() { echo '{\"id\":2,\"x\":[5,6,9]}'; }; long() { printf '{\"id\":1,\"x\":['; "
      "head -c 100000000 /dev/zero | tr '\\0' 1; }; (good; long; echo; good; long) | $CLI batch");
  const std::vector<json> answers = run.json();
  ASSERT_EQ(answers.size(), 4U);
  EXPECT_EQ(answers[1].at("error"), "the line is longer than 64 MB");
  EXPECT_EQ(answers[3], answers[1]);
  EXPECT_EQ(answers[2], answers[0]);
  EXPECT_LT(run.peak_kilobytes, 150 * 1024 * test::memory_factor);
}

TEST(BatchLine, KeepsItsLawWhateverItIsMadeOf) {
  const char* const pieces[] = {"{",
                                "}",
                                "[",
                                "]",
                                ",",
                                ":",
                                "\"id\":",
                                "\"x\":",
                                "7",
                                "-1e3",
                                "[5,6,9]",
                                "\"fails\":",
                                "\"susps\":",
                                "[1,0,2]",
                                "\"slope\":",
                                "\"model\":",
                                "\"Wb\"",
                                "\"W2P,N\"",
                                "98",
                                "\"method\":",
                                "\"mle\"",
                                "\"censored\":true",
                                "\"b_life\":[10]",
                                "\"at\":[5]",
                                "1e400",
                                "null",
                                "\"\\ud800\"",
                                "\xC3",
                                "\\"};
  std::mt19937 random(5);
  for (int i = 0; i < 4000; ++i) {
    // Half of them begin as a line that can be read.
    std::string text = i % 2 == 0 ? "{\"id\":1,\"x\":[5,6,9]" : "";
    for (auto k = random() % 12; k > 0; --k)
      text +=
          (i % 2 == 0 && k % 2 == 0 ? "," : "") + std::string(pieces[random() % std::size(pieces)]);
    if (i % 4 == 0) text += "}";
    ASSERT_EQ(test::breach_of_json_line_law(text), "") << text;
  }
  test::expect_corpus_keeps("json_line", test::breach_of_json_line_law);
}

// Each line is answered as it comes; a reader that goes away ends the run.
TEST_F(BatchCommand, IsAPartnerOnAPipe) {
  folder.write("talk",
               "mkfifo in; $CLI batch < in > out & exec 3> in\n"
               "for i in 1 2 3; do echo '{\"id\":'$i',\"x\":[5,6,9]}' >&3\n"
               "  for t in $(seq 200); do [ $(wc -l < out) = $i ] && break; sleep 0.02; done\n"
               "  wc -l < out; done; exec 3>&-; wait $!; echo code $?\n");
  EXPECT_EQ(folder.shell(". ./talk").out, "1\n2\n3\ncode 0\n");
  const ProgramRun closed = folder.shell(
      "yes '{\"x\":[5,6,9]}' | $CLI batch | head -c 10 > /dev/null; echo ${PIPESTATUS[1]}");
  EXPECT_EQ(closed.out, "3\n") << closed.err;
  EXPECT_NE(closed.err.find("its reader has gone away"), std::string::npos) << closed.err;
}

}  // namespace
}  // namespace tavlo
