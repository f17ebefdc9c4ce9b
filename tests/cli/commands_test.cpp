#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>
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
      {"fit", example("censored-test.txt"), "--model", "986,W2P,N", "--method", "rr", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(fit_of(run, 0).at("status"), 0);
  EXPECT_EQ(fit_of(run, 0).at("error"), "3Par LN not programmed");
  EXPECT_EQ(fit_of(run, 1).at("status"), 1);
  EXPECT_EQ(fit_of(run, 2).at("code"), 857);
  EXPECT_NE(run.err.find(": 986/rr: warning: "), std::string::npos) << run.err;
  EXPECT_EQ(run.json().at(0).at("messages")[0].at("answer"), "OK");
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

// In wide and in narrow data, far outside of the times too.
TEST(FitCommand, EveryFamilyAnswersByItsClosedForm) {
  const CliFolder folder;
  folder.write("narrow", "1000\n1001\n1002\n1003\n1004\n>1005\n");
  for (const std::string& file : {example("censored-test.txt"), std::string("narrow")}) {
    for (const FamilyForm& form : forms) {
      const ProgramRun run =
          folder.run({"fit", file, "--model", form.model, "--method", "rr,rrs", "--b-life",
                      "1,10,50,90,99.99", "--at", "1,100,500,800,1002,1050,3000", "--json"});
      ASSERT_EQ(run.code, 0) << run.err;
      EXPECT_EQ(run.err, "");
      const json fits = run.json().at(0).at("fits");
      for (const json& fit : fits) expect_closed_form(fit, form);
    }
  }
}

TEST(FitCommand, AFitByModeThatEndsEarlyIsNoAnswerForAnother) {
  const CliFolder folder;
  folder.write("d", "x,mode\n10,a\n20,a\n30,b\n");
  const ProgramRun both = folder.run({"fit", "d", "--model", "FM,W2P", "--json"});
  const ProgramRun alone = folder.run({"fit", "d", "--json"});
  EXPECT_EQ(fit_of(both).at("status"), 0);
  EXPECT_EQ(fit_of(both, 1).at("rows"), fit_of(alone).at("rows"));
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
  EXPECT_NE(run.err.find("W5C/mle: warning: suspensions are not in this likelihood"),
            std::string::npos)
      << run.err;
  const json fits = run.json().at(0).at("fits");
  for (const json& fit : fits) {
    EXPECT_GE(fit.at("starts").at("tried"), fit.at("starts").at("agreed"));
    EXPECT_EQ(fit.at("rows")[1].at("applies"), 3);
    for (const json& life : fit.at("b_life"))
      EXPECT_NEAR(1 - survival_of_w5c(fit.at("rows"), life.at("x")), life.at("p"), 1e-8);
    for (const json& at : fit.at("at"))
      EXPECT_NEAR(1 - survival_of_w5c(fit.at("rows"), at.at("x")), at.at("p"), 1e-8);
  }
  const ProgramRun censored =
      folder.run({"fit", "d", "--model", "W5C", "--method", "mle", "--censored", "--json"});
  EXPECT_EQ(censored.err.find("not in this likelihood"), std::string::npos);
  EXPECT_EQ(fit_of(censored).at("name"), "W5C/MLEc");
  EXPECT_GT(fit_of(censored).at("rows")[1].at("eta"), fits[1].at("rows")[1].at("eta"))
      << "units that still run make life longer";
}

TEST(FitCommand, TheSlopeOfAWeibayes) {
  const CliFolder folder;
  const auto run_with = [&](const char* slope) {
    return folder.run({"fit", example("censored-test.txt"), "--model", "Wb,E,R", "--slope", slope,
                       "--method", "mle", "--json"});
  };
  const json fits = run_with("2.5").json().at(0).at("fits");
  EXPECT_EQ(fits[0].at("name"), "Wb/MLE");
  EXPECT_NEAR(fits[0].at("rows")[0].at("beta"), 2.5, 1e-14);
  EXPECT_EQ(fits[1].at("rows")[0].at("beta"), 1) << "the others have their own";
  EXPECT_EQ(fits[2].at("rows")[0].at("beta"), 2);
  EXPECT_EQ(run_with("1").json().at(0).at("fits")[0].at("model"), "E") << "what was fitted";
}

// A LogNormal has no F below 0.
TEST(FitCommand, AModelWithoutAnAnswerSaysNull) {
  const CliFolder folder;
  folder.write("d", "1\n2\n50\n51\n");
  const ProgramRun run = folder.run({"fit", "d", "--negative-is-value", "--model", "LN", "--at",
                                     "-5,10", "--b-life", "10", "--json"});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(fit_of(run).at("at")[0].at("p").is_null());
  EXPECT_NE(run.err.find("LN/rr: a fraction asked for lies outside"), std::string::npos) << run.err;
  EXPECT_TRUE(fit_of(run).at("at")[1].at("p").is_number());
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
