#include "analyses/comparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "fit/door/fit.h"
#include "support/case_list.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// "290c=-4", "98=rr.97", "482=-".
ComparedFit fit_of(const std::string& text) {
  const std::string quality = text.substr(text.find('=') + 1);
  const bool regression = quality.starts_with("rr");
  ComparedFit fit;
  fit.request.model = static_cast<std::int16_t>(std::stoi(text));
  fit.request.method = regression ? method_code::x_on_y : method_code::mle;
  fit.request.censored = text.find('c') != std::string::npos;
  if (quality != "-") fit.quality = std::stod(quality.substr(regression ? 2 : 0));
  return fit;
}

std::string word_of(const ComparedRow& row) {
  const char* const names[] = {"-", "base", "?", "left-out", "tested"};
  return names[static_cast<int>(row.test)];
}

void expect_number(double value, const std::string& wanted) {
  EXPECT_NEAR(value, std::stod(wanted), 1e-11);
}

TEST(Comparison, TestsEachFitAndNamesTheWinner) {
  for (const auto& row : test::case_list("comparisons.txt")) {
    SCOPED_TRACE(row[0]);
    std::vector<ComparedFit> fits;
    const std::vector<std::string> texts = words(row[0]), results = words(row[1]);
    for (std::size_t i = 1; i < texts.size(); ++i) fits.push_back(fit_of(texts[i]));
    Sample sample;
    sample.total_failures = 20;
    sample.total_suspensions = std::stod(texts[0]);
    const auto [rows, winner] = compare(sample, fits);
    ASSERT_EQ(rows.size(), results.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::size_t slash = results[i].find('/');
      const bool tested = slash != std::string::npos;
      EXPECT_EQ(word_of(rows[i]), tested ? "tested" : results[i]) << i;
      EXPECT_EQ(rows[i].df, tested ? std::stoi(results[i]) : 0);
      if (tested) expect_number(rows[i].chance, results[i].substr(slash + 1));
    }
    EXPECT_EQ(winner ? std::to_string(winner->row) : "none", words(row[2])[0]);
    if (!winner) continue;
    expect_number(winner->significance, words(row[2])[1]);
    EXPECT_EQ(winner->is_base, fits[winner->row].request.model == model_code::weibull2);
  }
}

// Normal and Gumbel are judged by the Weibull's table too: people know these values.
TEST(Comparison, RegressionsAreJudgedByTheTableOfTheirPaper) {
  Sample sample;
  sample.total_failures = 12.5;
  sample.total_suspensions = 7;
  for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x, method_code::mle})
    for (const double r : {0.95, 0.0, -0.4, 1.0, 1.1})
      for (const Model& model : models()) {
        ComparedFit fit{{}, r};
        fit.request.model = model.code;
        fit.request.method = method;
        const bool has_value = method != method_code::mle && r == 0.95 && model.free_parameters < 4;
        const auto found = compare(sample, {&fit, 1}).rows[0].straightness;
        ASSERT_EQ(found.has_value(), has_value) << model.code << " " << r;
        if (!found) continue;
        const auto kind =
            model.family == Family::lognormal ? PaperKind::lognormal : PaperKind::weibull;
        const auto wanted = fd_Ccc2(kind, 12.5, model.code == 162 || model.code == 986, r);
        EXPECT_EQ(std::tie(found->critical, found->pve), std::tie(wanted.critical, wanted.pve));
      }
}

// Criteria of real fits, from the likelihoods of the reference book.
TEST(Comparison, CriteriaAreThoseOfTheirLikelihoods) {
  test::RandomNumbers random(3);
  const auto rows = test::draws(random, test::weibull5c(4, 1000, 1.5, 60, 0.3), 80, 0.3);
  const Sample sample = make_sample(rows, RankKind::benard);
  Companion companion;
  std::vector<ComparedFit> fits;
  std::vector<double> deviances;
  for (const char* text : {"98=-", "162c=-", "290c=-", "354c=-", "482c=-", "674=-"}) {
    fits.push_back(fit_of(text));
    const FitAnswer answer = fit(sample, fits.back().request, companion);
    ASSERT_TRUE(answer.fit()) << text;
    fits.back().quality = answer.fit()->quality;
    const auto ln_likelihood = test::ln_likelihood_of(answer.fit()->life, sample, true);
    deviances.push_back(static_cast<double>(-2 * ln_likelihood));
  }
  fits.push_back(fit_of("354=0"));
  const Comparison comparison = compare(sample, fits);
  const double units = sample.total_failures + sample.total_suspensions;
  for (std::size_t i = 0; i < deviances.size(); ++i) {
    const int k = find_model(fits[i].request.model)->free_parameters;
    EXPECT_NEAR(comparison.rows[i].aic.value_or(0), deviances[i] + 2 * k, 1e-7);
    EXPECT_NEAR(comparison.rows[i].bic.value_or(0), deviances[i] + k * std::log(units), 1e-7);
  }
  EXPECT_FALSE(comparison.rows.back().aic) << "its likelihood is one of other data";
  EXPECT_EQ(comparison.winner->row, 3U) << "the model of the truth";
}

}  // namespace
}  // namespace tavlo
