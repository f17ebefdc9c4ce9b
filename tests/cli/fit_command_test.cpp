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
  // What is written is made of all of them or not at all, whoever reads the results.
  folder.shell("$CLI fit d[012] --project p.tavlo --log p.txt; cp p.tavlo q.tavlo; cp p.txt q.txt");
  const ProgramRun part = folder.shell("$CLI fit d? --project p.tavlo --log p.txt --json");
  EXPECT_EQ(part.json().size(), 6U);
  EXPECT_NE(part.err.find("p.tavlo: not written"), std::string::npos) << part.err;
  EXPECT_EQ(folder.shell("cmp p.tavlo q.tavlo && cmp p.txt q.txt && ls p.tavlo~").code, 2);
  const ProgramRun unread =
      folder.shell("$CLI fit d[0-245] --project p.tavlo" + options + " > /dev/full");
  EXPECT_EQ(unread.code, 3);
  EXPECT_EQ(folder.run({"rank", "p.tavlo", "--json"}).json().size(), 5U);
}

}  // namespace
}  // namespace tavlo
