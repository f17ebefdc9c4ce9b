#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "numerics/number_text.h"
#include "program_run.h"
#include "support/case_list.h"
#include "support/reference_book.h"
#include "support/relative_difference.h"

namespace tavlo {
namespace {

using nlohmann::json;
using FitCommand = test::CliTest;
using test::example;
using test::ProgramRun;
using test::relative_difference;

json fit_of(const ProgramRun& run, std::size_t index = 0) {
  return run.json().at(0).at("fits").at(index);
}

// Answers published with the data sets: shape, scale, and ln L where given.
TEST_F(FitCommand, GivesThePublishedAnswers) {
  struct Case {
    const char* file;
    double beta, eta, log_likelihood, units, failures, digits;
  };
  const Case cases[] = {{"censored-test.txt", 1.7208, 606.528, -75.1346, 20, 10, 1e-5},
                        {"ball-bearings.txt", 2.10, 81.88, NAN, 23, 23, 2e-3},
                        {"remission-6mp.csv", 1.354, 33.77, NAN, 21, 9, 3e-4}};
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

TEST_F(FitCommand, JsonHasItsShape) {
  folder.write("d", "5\n7\n>9\n");
  const ProgramRun run =
      folder.run({"fit", "d", "--method", "rr,mle", "--b-life", "10", "--at", "500", "--json"});
  ASSERT_EQ(run.code, 0) << run.err;
  const std::string start =
      R"({"file":"d","set":"Data1","units":3,"failures":2,"suspensions":1,"fits":[{"model":"W2P",)"
      R"("code":98,"method":"rr","name":"W/rr","status":1,"quality":)";
  EXPECT_TRUE(run.out.starts_with(start)) << run.out;
  EXPECT_TRUE(run.out.ends_with("],\"messages\":[]}\n")) << run.out;
  const json rr = fit_of(run, 0), mle = fit_of(run, 1);
  EXPECT_EQ(rr.at("r_squared"), rr.at("quality"));
  EXPECT_TRUE(rr.at("log_likelihood").is_null());
  EXPECT_EQ(mle.at("log_likelihood"), mle.at("quality"));
  EXPECT_TRUE(mle.at("r_squared").is_null());
  EXPECT_EQ(mle.at("b_life")[0].at("p"), 0.1);
  EXPECT_EQ(mle.at("at")[0].at("x"), 500);
}

/// The life that the printed parameters of a fit say.
Life printed_life(const json& fit) {
  Life life{fit.at("code").get<std::int16_t>(), {}};
  for (const json& row : fit.at("rows")) {
    FitParam& made = life.rows.emplace_back(
        FitParam{0, row.at("fraction"), 0, row.at("t0"), row.at("applies").get<std::int32_t>()});
    const auto take = [&](const char* scale, const char* shape, auto inner) {
      if (row.contains(scale)) std::tie(made.Scale, made.Shape) = inner(row[scale], row[shape]);
    };
    using Pair = std::pair<double, double>;
    take("eta", "beta", [](double a, double b) { return Pair(1 / a, b); });
    take("mu", "sigma", [](double a, double b) { return Pair(a, 1 / b); });
    take("median", "sigma_factor", [](double a, double b) { return Pair(a, 1 / std::log(b)); });
    take("xi", "del", [](double a, double b) { return Pair(1 / a, b); });
  }
  return life;
}

/// B lives and reliabilities are those of the parameters printed.
void expect_own_life(const json& fit) {
  const Life life = printed_life(fit);
  const auto failed = [&](double x) {
    return static_cast<double>(-std::expm1(test::ln_reliability_of(life, x)));
  };
  for (const json& at : fit.at("b_life"))
    EXPECT_LT(relative_difference(failed(at.at("x")), at.at("p")), 1e-7) << at << fit;
  for (const json& at : fit.at("at")) EXPECT_NEAR(failed(at.at("x")), at.at("p"), 1e-8) << at;
}

// In wide, narrow, steep and flat data, far outside of the times too.
TEST_F(FitCommand, EveryFamilyAnswersByItsParameters) {
  folder.write("narrow", "1000\n1001\n1002\n1003\n1004\n>1005\n");
  folder.write("flat", "1e-6\n3\n1e4\n1e12\n");
  int fitted = 0;
  for (const std::string& file :
       {example("censored-test.txt"), std::string("narrow"), std::string("flat")}) {
    const ProgramRun run = folder.run({"fit", file, "--model", "W2P,E,N,LN,G-,G+", "--method",
                                       "rr,mle,rrs", "--b-life", "0.001,1,10,50,90,99.99", "--at",
                                       "1,100,500,800,1002,1050,1e5", "--json"});
    const json set = run.json().at(0);
    for (const json& fit : set.at("fits")) {
      if (fit.at("status") == 1) ++fitted, expect_own_life(fit);
      EXPECT_TRUE(fit.at("status") == 1 || !fit.at("code").empty()) << fit;
    }
  }
  EXPECT_GT(fitted, 35);
}

TEST_F(FitCommand, AMixtureTellsItsPopulationsAndHowSureItIs) {
  std::string text;
  for (int i = 1; i <= 20; ++i) text += number_text(12.5 * i * (1 + i % 4)) + "\n";
  for (int i = 1; i <= 40; ++i) text += number_text(600 + 17.3 * i) + "\n>1400\n";
  folder.write("d", text);
  const ProgramRun run = folder.run({"fit", "d", "--model", "W5C", "--method", "rr,mle,rrs",
                                     "--b-life", "1,10,50", "--at", "30,200,900", "--json"});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.err.find("suspensions are left out of the likelihood of W5C (--censored"),
            std::string::npos)
      << run.err;
  const json fits = run.json().at(0).at("fits");
  EXPECT_EQ(fits[1].at("notes")[0].at("code"), "suspensions-left-out");
  for (const json& fit : fits) {
    EXPECT_GE(fit.at("starts").at("tried"), fit.at("starts").at("agreed"));
    EXPECT_EQ(fit.at("proof").at("kind"), "interior") << fit;
    EXPECT_LT(fit.at("proof").at("decrement"), 1e-6);
    expect_own_life(fit);
  }
  const ProgramRun censored =
      folder.run({"fit", "d", "--model", "W5C", "--method", "mle", "--censored", "--json"});
  EXPECT_EQ(censored.err.find("left out"), std::string::npos);
  EXPECT_EQ(fit_of(censored).at("name"), "W5C/MLEc");
  EXPECT_GT(fit_of(censored).at("rows")[1].at("eta"), fits[1].at("rows")[1].at("eta"))
      << "units that still run make life longer";
}

TEST_F(FitCommand, AWeibayesHasTheSlopeThatWasGiven) {
  const ProgramRun run = folder.run({"fit", example("censored-test.txt"), "--model", "Wb,E,R",
                                     "--slope", "2.3456789", "--method", "mle", "--json"});
  EXPECT_EQ(fit_of(run, 0).at("rows")[0].at("beta"), 2.3456789) << "every digit";
  EXPECT_EQ(fit_of(run, 1).at("rows")[0].at("beta"), 1) << "the others have their own";
  EXPECT_EQ(fit_of(run, 2).at("rows")[0].at("beta"), 2);
}

TEST_F(FitCommand, AFitByModeNamesItsModes) {
  folder.write("d", "x,fails,mode\n10,1,wear\n20,1,wear\n35,1,wear\n50,2,burst\n60,3,\x1B[31m\n");
  const ProgramRun run = folder.run({"fit", "d", "--model", "FM,W2P", "--method", "mle", "--json"});
  const json modes = fit_of(run).at("rows");
  ASSERT_EQ(modes.size(), 3U) << run.out;
  EXPECT_EQ(modes[0].at("mode"), "wear");
  EXPECT_EQ(modes[2].at("code"), "no-spread") << "three failures, at the last time";
  EXPECT_TRUE(fit_of(run).at("quality").is_null()) << "each mode has its own";
  EXPECT_EQ(fit_of(run).at("notes").back().at("text"),
            "the answers for the life as a whole leave out failure mode \x1B[31m");
  EXPECT_TRUE(modes[2].at("eta").is_null());
  EXPECT_EQ(fit_of(run, 1).at("rows").size(), 1U);
  const std::string table = folder.run({"fit", "d", "--model", "FM", "--method", "mle"}).out;
  EXPECT_NE(table.find("no fit"), std::string::npos) << table;
  EXPECT_EQ(table.find('\x1B'), std::string::npos) << "a name must not reach the terminal raw";
  folder.write("d", "x,mode\n50,burst\n");
  EXPECT_EQ(
      folder.run({"fit", "d", "--model", "FM"}).out,
      "d: 1 unit, 1 failure, 0 suspensions\n\n  FM/rr  no fit\n"
      "  FM/rr: failure mode burst is not fitted: 1 failure found where it takes at least 2\n");
}

TEST_F(FitCommand, ARefusedFitSaysWhyAndTheOthersStand) {
  for (const auto& row : test::case_list("refused_fits.txt")) {
    folder.write("d", row[0]);
    const ProgramRun run = folder.shell("$CLI fit d --json " + row[1]);
    EXPECT_EQ(run.code, 1) << row[1];
    const json fit = fit_of(run);
    EXPECT_EQ(fit.at("status"), 0) << fit;
    EXPECT_EQ(fit.at("code"), row[2]) << fit;
    EXPECT_NE(fit.at("error").get<std::string>().find(row[3]), std::string::npos) << fit;
    EXPECT_NE(run.err.find(fit.at("error")), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("Click"), std::string::npos) << run.err;
    if (row[2] == "stopped") {
      EXPECT_EQ(run.json().at(0).at("messages")[0].at("answer"), "Cancel");
    }
  }
  const ProgramRun both = folder.run({"fit", "d", "--model", "986,N", "--json"});
  EXPECT_EQ(both.code, 1);
  EXPECT_EQ(fit_of(both, 1).at("status"), 1);
}

TEST_F(FitCommand, PeopleGetATable) {
  folder.write("d", "50\n100\n200\n>200\n");
  const ProgramRun run = folder.run({"fit", "d", "--method", "mle,rr", "--b-life", "10"});
  EXPECT_EQ(run.out,
            "d: 4 units, 3 failures, 1 suspension\n\n"
            "  Fit          eta     beta  r squared    ln L      B10\n"
            "  W2P/mle  175.439  1.78725             -18.09  49.8075\n"
            "  W2P/rr   196.073  1.24749   0.984525          32.2841\n");
}

// Several files and models are at work at the same time; what is printed is in order, and
// the same as one by one.
TEST_F(FitCommand, ManyFilesGiveWhatEachGivesAlone) {
  for (int i = 0; i < 6; ++i) {
    std::string text = i == 3 ? "5\nsix\n" : ">700\n";
    for (int k = 1; k < 8 + i; ++k) text += number_text(3.7 * k * (1 + k % 3) + i) + "\n";
    folder.write("d" + std::to_string(i), text);
  }
  const std::string options = " --model W2P,W3T,W4P,N --method rr,mle --json";
  const ProgramRun alone = folder.shell("for d in d?; do $CLI fit $d" + options + "; done");
  const ProgramRun all = folder.shell("$CLI fit d?" + options);
  EXPECT_EQ(all.code, 3);
  EXPECT_EQ(all.json().size(), 6U);
  EXPECT_EQ(all.out, alone.out);
  EXPECT_EQ(all.err, alone.err);
}

TEST_F(FitCommand, WritesTheLogInBothForms) {
  folder.write("d", "50\n100\n");
  for (const char* log : {"log.txt", "log.rtf"})
    ASSERT_EQ(folder.run({"fit", "d", "d", "--log", log}).code, 0);
  const std::string plain = folder.read("log.txt");
  const std::size_t first = plain.find("W/rr\tN= 2 /S= 0");
  EXPECT_NE(first, std::string::npos) << plain;
  EXPECT_NE(plain.find("W/rr\tN= 2", first + 1), std::string::npos) << plain;
  EXPECT_TRUE(folder.read("log.rtf").starts_with("{\\rtf1"));
}

// Two failures: exact median ranks 1 - 2^(-1/2) and 2^(-1/2), Benard's 0.7/2.4
// and 1.7/2.4.
TEST_F(FitCommand, RankGivesBothKindsOfRanks) {
  folder.write("d.csv", "x,mode\n54.3,wear\n12,\n");
  const json rows = folder.run({"rank", "d.csv", "--ranks", "exact", "--json"}).json()[0]["rows"];
  EXPECT_NEAR(rows[0].at("y"), 1 - std::sqrt(0.5), 1e-7);
  EXPECT_NEAR(rows[1].at("y"), std::sqrt(0.5), 1e-7);
  EXPECT_EQ(rows[1].at("x"), 54.3);
  EXPECT_EQ(rows[1].at("mode"), "wear");
  EXPECT_EQ(folder.run({"rank", "d.csv"}).out,
            "d.csv: 2 units, 2 failures, 0 suspensions\n\n"
            "     X  Fails  Susps       Y %  Mode\n"
            "    12      1      0  29.1667%\n"
            "  54.3      1      0  70.8333%  wear\n");
}

}  // namespace
}  // namespace tavlo
