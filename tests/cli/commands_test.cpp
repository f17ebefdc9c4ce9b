#include <gtest/gtest.h>

#include <cmath>

#include "numerics/number_text.h"
#include "program_run.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using nlohmann::json;
using test::CliFolder;
using test::example;
using test::ProgramRun;
using test::relative_difference;

json fit_of(const ProgramRun& run, std::size_t index = 0) {
  return run.json().at(0).at("fits").at(index);
}

// Answers published with the data sets: shape, scale, and ln L where given.
TEST(FitCommand, GivesThePublishedAnswers) {
  struct Case {
    const char* file;
    double beta, eta, log_likelihood, units, failures, digits;
  };
  const Case cases[] = {{"censored-test.txt", 1.7208, 606.528, -75.1346, 20, 10, 1e-5},
                        {"ball-bearings.txt", 2.10, 81.88, NAN, 23, 23, 2e-3},
                        {"remission-6mp.csv", 1.354, 33.77, NAN, 21, 9, 3e-4}};
  const CliFolder folder;
  for (const Case& row : cases) {
    const ProgramRun run = folder.run({"fit", example(row.file), "--method", "mle", "--json"});
    ASSERT_EQ(run.code, 0) << run.err;
    const json set = run.json().at(0);
    EXPECT_EQ(set.at("units"), row.units);
    EXPECT_EQ(set.at("failures"), row.failures);
    EXPECT_EQ(set.at("suspensions"), row.units - row.failures);
    const json fit = set.at("fits").at(0);
    EXPECT_LT(relative_difference(fit.at("rows")[0].at("beta"), row.beta), row.digits);
    EXPECT_LT(relative_difference(fit.at("rows")[0].at("eta"), row.eta), row.digits);
    if (!std::isnan(row.log_likelihood)) {
      EXPECT_LT(relative_difference(fit.at("log_likelihood"), row.log_likelihood), 1e-6);
    }
  }
}

TEST(FitCommand, JsonHasItsShape) {
  const CliFolder folder;
  folder.write("d", "5\n7\n>9\n");
  const ProgramRun run =
      folder.run({"fit", "d", "--method", "rr,mle", "--b-life", "10", "--at", "500", "--json"});
  ASSERT_EQ(run.code, 0) << run.err;
  const std::string start =
      R"({"file":"d","set":"Data1","units":3,"failures":2,"suspensions":1,"fits":[{"model":"W2P",)"
      R"("code":98,"method":"rr","name":"W/rr","status":1,"quality":)";
  EXPECT_TRUE(run.out.starts_with(start)) << run.out;
  EXPECT_TRUE(run.out.ends_with("],\"messages\":[]}\n")) << run.out;
  const json rr = fit_of(run, 0);
  EXPECT_EQ(rr.at("r_squared"), rr.at("quality"));
  EXPECT_TRUE(rr.at("log_likelihood").is_null());
  const json mle = fit_of(run, 1);
  EXPECT_EQ(mle.at("log_likelihood"), mle.at("quality"));
  EXPECT_TRUE(mle.at("r_squared").is_null());
  EXPECT_EQ(mle.at("rows").size(), 1U);
  EXPECT_EQ(mle.at("rows")[0].at("t0"), 0);
  EXPECT_EQ(mle.at("rows")[0].at("fraction"), 1);
  EXPECT_EQ(mle.at("rows")[0].at("applies"), 1);
  EXPECT_EQ(mle.at("b_life")[0].at("p"), 0.1);
  EXPECT_EQ(mle.at("at")[0].at("x"), 500);
}

// x = eta (-ln(1 - p))^(1/beta), also where the line is very steep or flat.
TEST(FitCommand, LivesAndFractionsAgreeWithTheClosedForm) {
  const CliFolder folder;
  folder.write("steep", "1000\n1000.5\n1001\n1001.25\n");
  folder.write("flat", "1e-6\n3\n1e4\n1e12\n");
  for (const std::string& file : {std::string("steep"), std::string("flat"),
                                  example("censored-test.txt"), example("ball-bearings.txt")}) {
    const ProgramRun run = folder.run({"fit", file, "--method", "rr,mle,rrs", "--b-life",
                                       "0.001,1,10,50,99", "--at", "1,500,1000.7,1e5", "--json"});
    ASSERT_EQ(run.code, 0) << run.err;
    const json fits = run.json().at(0).at("fits");
    ASSERT_EQ(fits.size(), 3U);
    for (const json& fit : fits) {
      const double eta = fit.at("rows")[0].at("eta");
      const double beta = fit.at("rows")[0].at("beta");
      ASSERT_EQ(fit.at("b_life").size(), 5U);
      ASSERT_EQ(fit.at("at").size(), 4U);
      for (const json& life : fit.at("b_life")) {
        ASSERT_TRUE(life.at("x").is_number()) << file << fit;
        const double expected = eta * std::pow(-std::log1p(-life.at("p").get<double>()), 1 / beta);
        EXPECT_LT(relative_difference(life.at("x"), expected), 1e-8) << file << life;
      }
      for (const json& at : fit.at("at")) {
        const double expected = -std::expm1(-std::pow(at.at("x").get<double>() / eta, beta));
        EXPECT_NEAR(at.at("p"), expected, 1e-8) << file << at;
      }
    }
  }
}

TEST(FitCommand, ARefusedFitSaysWhyAndTheOthersStand) {
  const CliFolder folder;
  const ProgramRun run = folder.run(
      {"fit", example("censored-test.txt"), "--model", "W3T,W2P,N", "--method", "rr", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(fit_of(run, 0).at("status"), 0);
  EXPECT_NE(fit_of(run, 0).at("error").get<std::string>().find("not available yet"),
            std::string::npos);
  EXPECT_EQ(fit_of(run, 1).at("status"), 1);
  EXPECT_EQ(fit_of(run, 2).at("code"), 857);
  EXPECT_NE(run.err.find(": W3T/rr: warning: "), std::string::npos) << run.err;
  EXPECT_EQ(run.json().at(0).at("messages")[0].at("answer"), "OK");
}

TEST(FitCommand, NegativeTimesAsValuesHaveNoWeibull) {
  const CliFolder folder;
  const ProgramRun run = folder.run({"fit", "-", "--negative-is-value"}, "-5\n6\n7\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "tavlo-cli: -: W2P/rr: Negative times: Row 1: Data X is -5.  The model Weibull needs "
            "times above 0. Fit Cancelled\n");
  EXPECT_EQ(folder.run({"fit", "-"}, "-5\n6\n7\n").code, 0);
}

TEST(FitCommand, StrictAnswersADoubtWithCancel) {
  const CliFolder folder;
  const ProgramRun run = folder.run({"fit", example("censored-test.txt"), "--model", "W3T",
                                     "--method", "mle", "--strict", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.json().at(0).at("messages").size(), 1U);
  EXPECT_EQ(run.json().at(0).at("messages")[0].at("answer"), "Cancel");
}

TEST(FitCommand, PeopleGetATable) {
  const CliFolder folder;
  folder.write("d", "50\n100\n200\n>200\n");
  const ProgramRun run = folder.run({"fit", "d", "--method", "mle,rr", "--b-life", "10"});
  const ProgramRun exact = folder.run({"fit", "d", "--method", "mle", "--b-life", "10", "--json"});
  const json fit = fit_of(exact);
  const auto six = [](const json& number) { return number_text(number.get<double>(), 6); };
  const std::string line = "  W2P/mle  " + six(fit.at("rows")[0].at("eta")) + "  " +
                           six(fit.at("rows")[0].at("beta")) + "             " +
                           six(fit.at("log_likelihood")) + "  " + six(fit.at("b_life")[0].at("x")) +
                           "\n";
  EXPECT_TRUE(run.out.starts_with("d: 4 units, 3 failures, 1 suspension\n\n  Fit ")) << run.out;
  EXPECT_NE(run.out.find(line), std::string::npos) << run.out << line;
}

TEST(FitCommand, WritesTheLogInBothForms) {
  const CliFolder folder;
  folder.write("d", "50\n100\n");
  for (const char* log : {"log.txt", "log.rtf"})
    ASSERT_EQ(folder.run({"fit", "d", "d", "--log", log}).code, 0);
  const std::string plain = folder.read("log.txt");
  const std::size_t first = plain.find("W/rr\tN= 2 /S= 0");
  EXPECT_NE(first, std::string::npos) << plain;
  EXPECT_NE(plain.find("W/rr\tN= 2", first + 1), std::string::npos) << plain;
  EXPECT_TRUE(folder.read("log.rtf").starts_with("{\\rtf1"));
  const ProgramRun run = folder.run({"fit", "d", "--log", "no/such/log.txt"});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.err, "tavlo-cli: no/such/log.txt: there is no such file or folder\n");
}

// Two failures: exact median ranks 1 - 2^(-1/2) and 2^(-1/2), Benard's 0.7/2.4
// and 1.7/2.4.
TEST(RankCommand, GivesBothKindsOfRanks) {
  const CliFolder folder;
  folder.write("d.csv", "x,mode\n54.3,wear\n12,\n");
  const json exact = folder.run({"rank", "d.csv", "--ranks", "exact", "--json"}).json().at(0);
  const json benard = folder.run({"rank", "d.csv", "--json"}).json().at(0);
  EXPECT_NEAR(exact.at("rows")[0].at("y"), 1 - std::sqrt(0.5), 1e-7);
  EXPECT_NEAR(exact.at("rows")[1].at("y"), std::sqrt(0.5), 1e-7);
  EXPECT_NEAR(benard.at("rows")[0].at("y"), 0.7 / 2.4, 1e-7);
  EXPECT_EQ(benard.at("rows")[1].at("x"), 54.3);
  EXPECT_EQ(benard.at("rows")[1].at("mode"), "wear");
  EXPECT_EQ(benard.at("rows")[0].at("mode"), "");
  EXPECT_EQ(folder.run({"rank", "d.csv"}).out,
            "d.csv: 2 units, 2 failures, 0 suspensions\n\n"
            "     X  Fails  Susps       Y %  Mode\n"
            "    12      1      0  29.1667%\n"
            "  54.3      1      0  70.8333%  wear\n");
}

// Metafiles need no painter.
TEST(ChartCommand, WritesMetafiles) {
  const CliFolder folder;
  ASSERT_EQ(folder.run({"chart", example("censored-test.txt"), "a.wmf", "--fit", "W2P/rr"}).code,
            0);
  ASSERT_EQ(folder.run({"fit", example("censored-test.txt"), "--chart", "b.wmf"}).code, 0);
  for (const char* name : {"a.wmf", "b.wmf"}) {
    EXPECT_TRUE(folder.read(name).starts_with("\xD7\xCD\xC6\x9A")) << name;
    EXPECT_GT(folder.read(name).size(), 2000U) << name;
  }
}

// A title is the file's name; what the code page lacks is a doubt.
TEST(ChartCommand, CharactersThatAMetafileLacksAreNamed) {
  const CliFolder folder;
  folder.write("\u03A9", "5\n7\n");
  const ProgramRun run = folder.run({"chart", "\u03A9", "a.wmf"});
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.err.find("warning: "), std::string::npos);
  EXPECT_NE(run.err.find("\u03A9"), std::string::npos);
  const ProgramRun strict = folder.run({"chart", "\u03A9", "b.wmf", "--strict"});
  EXPECT_EQ(strict.code, 3);
  EXPECT_EQ(folder.read("b.wmf"), "");
}

#ifdef TAVLO_WITH_PICTURES
TEST(ChartCommand, WritesEveryFormat) {
  const CliFolder folder;
  struct Case {
    const char* name;
    const char* start;
  };
  for (const Case& row :
       {Case{"c.svg", "<?xml"}, Case{"c.pdf", "%PDF"}, Case{"c.png", "\x89PNG"}}) {
    const ProgramRun run = folder.run({"chart", example("censored-test.txt"), row.name, "--fit",
                                       "W2P/mle", "--fit", "W2P/rr", "--size", "800x500"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(folder.read(row.name).starts_with(row.start)) << row.name;
  }
  const std::string png = folder.read("c.png");
  ASSERT_GT(png.size(), 24U);
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x03\x20\0\0\x01\xF4", 8));  // 800 and 500
}

TEST(ChartCommand, PixelsAnInchStandInTheFile) {
  const CliFolder folder;
  const std::vector<std::string> common = {
      "chart", example("censored-test.txt"), "--size", "600x360", "--dpi", "300"};
  for (const char* name : {"c.png", "c.svg"}) {
    std::vector<std::string> arguments = common;
    arguments.insert(arguments.begin() + 2, name);
    ASSERT_EQ(folder.run(arguments).code, 0);
  }
  // 300 pixels an inch are 11811 a metre, 2E23 in both directions.
  EXPECT_NE(folder.read("c.png").find(std::string("pHYs\0\0\x2E\x23\0\0\x2E\x23\1", 13)),
            std::string::npos);
  EXPECT_NE(folder.read("c.svg").find("width=\"50.8mm\" height=\"30.48mm\""), std::string::npos);
}

TEST(ChartCommand, AChartThatCannotBeWrittenIsAFileFault) {
  const CliFolder folder;
  const ProgramRun run = folder.run({"fit", example("censored-test.txt"), "--chart", "no/c.svg"});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.err, "tavlo-cli: no/c.svg: there is no such file or folder\n");
}
#endif

}  // namespace
}  // namespace tavlo
