#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <cstdio>

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

// F of each family in terms of its two parameters, and its inverse.
struct FamilyForm {
  const char* model;
  const char* first;
  const char* second;
  double (*fraction)(double x, double a, double b);
  double (*life)(double p, double a, double b);
};

double normal_cdf(double z) { return std::erfc(-z / std::sqrt(2.0)) / 2; }
double normal_z(double p) { return boost::math::quantile(boost::math::normal(), p); }

const FamilyForm forms[] = {
    {"N", "mu", "sigma", [](double x, double a, double b) { return normal_cdf((x - a) / b); },
     [](double p, double a, double b) { return a + b * normal_z(p); }},
    {"LN", "median", "sigma_factor",
     [](double x, double a, double b) { return normal_cdf(std::log(x / a) / std::log(b)); },
     [](double p, double a, double b) { return a * std::exp(std::log(b) * normal_z(p)); }},
    {"G-", "xi", "del",
     [](double x, double a, double b) { return -std::expm1(-std::exp((x - a) / b)); },
     [](double p, double a, double b) { return a + b * std::log(-std::log1p(-p)); }},
    {"G+", "xi", "del",
     [](double x, double a, double b) { return std::exp(-std::exp(-(x - a) / b)); },
     [](double p, double a, double b) { return a - b * std::log(-std::log(p)); }},
    {"W2P", "eta", "beta",
     [](double x, double a, double b) { return -std::expm1(-std::pow(x / a, b)); },
     [](double p, double a, double b) { return a * std::pow(-std::log1p(-p), 1 / b); }},
    {"E", "eta", "beta", [](double x, double a, double) { return -std::expm1(-x / a); },
     [](double p, double a, double) { return -a * std::log1p(-p); }}};

void expect_closed_form(const json& fit, const FamilyForm& form) {
  const double a = fit.at("rows")[0].at(form.first);
  const double b = fit.at("rows")[0].at(form.second);
  for (const json& life : fit.at("b_life"))
    EXPECT_LT(relative_difference(life.at("x"), form.life(life.at("p"), a, b)), 1e-8) << life;
  for (const json& at : fit.at("at"))
    EXPECT_NEAR(at.at("p"), form.fraction(at.at("x"), a, b), 1e-8) << form.model << at;
}

// In wide, narrow, steep and flat data, far outside of the times too.
TEST(FitCommand, EveryFamilyAnswersByItsClosedForm) {
  const CliFolder folder;
  folder.write("narrow", "1000\n1001\n1002\n1003\n1004\n>1005\n");
  folder.write("flat", "1e-6\n3\n1e4\n1e12\n");
  for (const std::string& file :
       {example("censored-test.txt"), std::string("narrow"), std::string("flat")}) {
    for (const FamilyForm& form : forms) {
      const bool negative_time = *form.model == 'N' || *form.model == 'G';
      const ProgramRun run = folder.run(
          {"fit", file, "--model", form.model, "--method", "rr,mle,rrs", "--b-life",
           "0.001,1,10,50,90,99.99", "--at",
           std::string(negative_time ? "-50," : "") + "1,100,500,800,1002,1050,1e5", "--json"});
      for (const json& fit : run.json().at(0).at("fits")) {
        if (fit.at("status") == 1) expect_closed_form(fit, form);
        EXPECT_TRUE(fit.at("status") == 1 || !fit.at("code").empty()) << fit;
      }
    }
  }
}

/// R of W5C from its printed rows: infant mortality on a share, wear-out on all.
double survival_of_w5c(const json& rows, double x) {
  const auto hazard = [&](std::size_t i) {
    return std::pow(x / rows[i].at("eta").get<double>(), rows[i].at("beta").get<double>());
  };
  const double p = rows[0].at("fraction");
  return std::exp(-hazard(1)) * (p * std::exp(-hazard(0)) + 1 - p);
}

TEST(FitCommand, AMixtureTellsItsPopulationsAndHowSureItIs) {
  const CliFolder folder;
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
  EXPECT_EQ(run.json().at(0).at("fits")[1].at("notes")[0].at("code"), "suspensions-left-out");
  const json fits = run.json().at(0).at("fits");
  for (const json& fit : fits) {
    EXPECT_GE(fit.at("starts").at("tried"), fit.at("starts").at("agreed"));
    EXPECT_EQ(fit.at("proof").at("kind"), "interior") << fit;
    EXPECT_LT(fit.at("proof").at("decrement"), 1e-6);
    EXPECT_EQ(fit.at("rows")[1].at("applies"), 3);
    for (const json& life : fit.at("b_life"))
      EXPECT_NEAR(1 - survival_of_w5c(fit.at("rows"), life.at("x")), life.at("p"), 1e-8);
    for (const json& at : fit.at("at"))
      EXPECT_NEAR(1 - survival_of_w5c(fit.at("rows"), at.at("x")), at.at("p"), 1e-8);
  }
  const ProgramRun censored =
      folder.run({"fit", "d", "--model", "W5C", "--method", "mle", "--censored", "--json"});
  EXPECT_EQ(censored.err.find("left out"), std::string::npos);
  EXPECT_EQ(fit_of(censored).at("name"), "W5C/MLEc");
  EXPECT_GT(fit_of(censored).at("rows")[1].at("eta"), fits[1].at("rows")[1].at("eta"))
      << "units that still run make life longer";
}

TEST(FitCommand, AWeibayesHasTheSlopeThatWasGiven) {
  const CliFolder folder;
  for (const char* method : {"rr", "mle"}) {
    const json fits = folder
                          .run({"fit", example("censored-test.txt"), "--model", "Wb,E,R", "--slope",
                                "2.3456789", "--method", method, "--json"})
                          .json()
                          .at(0)
                          .at("fits");
    EXPECT_EQ(fits[0].at("rows")[0].at("beta"), 2.3456789) << "every digit";
    EXPECT_EQ(fits[1].at("rows")[0].at("beta"), 1) << "the others have their own";
    EXPECT_EQ(fits[2].at("rows")[0].at("beta"), 2);
  }
}

// Each mode is a Weibull of its own, with the failures of the others suspended; a mode that
// can't be fitted is named, and the others stand.
TEST(FitCommand, AFitByModeNamesItsModes) {
  const CliFolder folder;
  folder.write("d", "x,mode\n10,wear\n20,wear\n35,wear\n50,burst\n60,\x1B[31m\n");
  folder.write("wear", "x,status\n10,F\n20,F\n35,F\n50,S\n60,S\n");
  const ProgramRun run = folder.run({"fit", "d", "--model", "FM,W2P", "--method", "mle", "--json"});
  const json modes = fit_of(run).at("rows");
  ASSERT_EQ(modes.size(), 3U) << run.out;
  const json alone = fit_of(folder.run({"fit", "wear", "--method", "mle", "--json"})).at("rows")[0];
  EXPECT_EQ(modes[0].at("mode"), "wear");
  EXPECT_LT(relative_difference(modes[0].at("eta"), alone.at("eta")), 1e-9);
  EXPECT_LT(relative_difference(modes[0].at("beta"), alone.at("beta")), 1e-9);
  EXPECT_EQ(modes[2].at("status"), 0) << "one failure, at the last time";
  EXPECT_TRUE(modes[2].at("eta").is_null());
  EXPECT_EQ(fit_of(run, 1).at("rows").size(), 1U);
  const std::string table = folder.run({"fit", "d", "--model", "FM", "--method", "mle"}).out;
  EXPECT_NE(table.find("wear"), std::string::npos) << table;
  EXPECT_NE(table.find("no fit"), std::string::npos) << table;
  EXPECT_EQ(table.find('\x1B'), std::string::npos) << "a name must not reach the terminal raw";
}

struct RefusalCase {
  const char* data;
  const char* options;
  const char* code;
  const char* words;
};

TEST(FitCommand, ARefusedFitSaysWhyAndTheOthersStand) {
  const RefusalCase cases[] = {
      {"5\n", "--model W2P", "too-few-failures", "1 failure"},
      {">5\n>6\n", "--model W2P --method mle", "", ""},
      {"5\n5\n5\n", "--model W2P", "no-spread", "do not spread"},
      {"5\n5\n5\n", "--model W2P --method mle", "slope-without-limit", "rises without limit"},
      {"5\n6\n7\n", "--model 986", "no-such-fit", "can't be fitted"},
      {"-5\n6\n7\n", "--model W2P --negative-is-value", "time-not-above-zero",
       "row 1 has the time -5"},
      {"5\n6\n7\n", "--model FM", "no-mode-fitted", "no failure modes"},
      {"5\n6\n9\n14\n", "--model W3T --method mle --strict", "stopped", "Cancel"},
  };
  const CliFolder folder;
  for (const RefusalCase& row : cases) {
    folder.write("d", row.data);
    const ProgramRun run = folder.shell("$CLI fit d --json " + std::string(row.options));
    EXPECT_EQ(run.code, 1) << row.options;
    const json fit = fit_of(run);
    EXPECT_EQ(fit.at("status"), 0) << fit;
    if (*row.code != 0) {
      EXPECT_EQ(fit.at("code"), row.code) << fit;
    }
    EXPECT_NE(fit.at("error").get<std::string>().find(row.words), std::string::npos) << fit;
    EXPECT_NE(run.err.find(fit.at("error")), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("Click"), std::string::npos) << run.err;
  }
  const ProgramRun both = folder.run({"fit", "d", "--model", "986,N", "--json"});
  EXPECT_EQ(both.code, 1);
  EXPECT_EQ(fit_of(both, 1).at("status"), 1);
}

TEST(FitCommand, StrictAnswersADoubtWithCancel) {
  const CliFolder folder;
  const ProgramRun run = folder.run({"fit", example("censored-test.txt"), "--model", "W3T",
                                     "--method", "mle", "--strict", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_GE(run.json().at(0).at("messages").size(), 1U);
  EXPECT_EQ(run.json().at(0).at("messages")[0].at("answer"), "Cancel");
}

TEST(FitCommand, PeopleGetATable) {
  const CliFolder folder;
  folder.write("d", "50\n100\n200\n>200\n");
  const ProgramRun run = folder.run({"fit", "d", "--method", "mle,rr", "--b-life", "10"});
  const ProgramRun exact = folder.run({"fit", "d", "--method", "mle", "--b-life", "10", "--json"});
  const json fit = fit_of(exact);
  const auto six = [](const json& number) { return number_text(number.get<double>(), 6); };
  char likelihood[32];
  std::snprintf(likelihood, sizeof likelihood, "%.2f", fit.at("log_likelihood").get<double>());
  const std::string line = "  W2P/mle  " + six(fit.at("rows")[0].at("eta")) + "  " +
                           six(fit.at("rows")[0].at("beta")) + "             " + likelihood + "  " +
                           six(fit.at("b_life")[0].at("x")) + "\n";
  EXPECT_TRUE(run.out.starts_with("d: 4 units, 3 failures, 1 suspension\n\n  Fit ")) << run.out;
  EXPECT_NE(run.out.find(line), std::string::npos) << run.out << line;
}

// Several files and models are at work at the same time; what is printed is in order, and
// the same as one by one.
TEST(FitCommand, ManyFilesGiveWhatEachGivesAlone) {
  const CliFolder folder;
  const std::vector<std::string> options = {"--model", "W2P,W3T,W4P,N", "--method", "rr,mle",
                                            "--json"};
  std::vector<std::string> all = {"fit"};
  std::string out, err;
  for (int i = 0; i < 6; ++i) {
    const std::string name = "d" + std::to_string(i);
    std::string text = i == 3 ? "5\nsix\n" : ">700\n";
    for (int k = 1; k < 8 + i; ++k) text += number_text(3.7 * k * (1 + k % 3) + i) + "\n";
    folder.write(name, text);
    all.push_back(name);
    std::vector<std::string> alone = {"fit", name};
    alone.insert(alone.end(), options.begin(), options.end());
    const ProgramRun run = folder.run(alone);
    out += run.out;
    err += run.err;
  }
  all.insert(all.end(), options.begin(), options.end());
  const ProgramRun run = folder.run(all);
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.out, out);
  EXPECT_EQ(run.err, err);
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

}  // namespace
}  // namespace tavlo
