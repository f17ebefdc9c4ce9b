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
  if (quality != "-") fit.quality = test::number_in(quality.substr(regression ? 2 : 0));
  return fit;
}

/// What a case says of a row, and its number behind a slash, if it has one.
std::pair<std::string, double> told(const ComparedRow& row) {
  const char* const names[] = {"-", "base", "?", "left-out"};
  if (row.straightness) return {"ccc", row.straightness->critical};
  if (row.test == RatioTest::tested) return {std::to_string(row.df), row.chance};
  return {names[static_cast<int>(row.test)], 0};
}

TEST(Comparison, TestsEachFitAndNamesTheWinner) {
  for (const auto& row : test::case_list("comparisons.txt")) {
    SCOPED_TRACE(row[0]);
    std::vector<ComparedFit> fits;
    const std::vector<std::string> texts = words(row[0]), results = words(row[1]);
    for (std::size_t i = 1; i < texts.size(); ++i) fits.push_back(fit_of(texts[i]));
    Sample sample;
    sample.total_failures = 20;
    sample.total_suspensions = test::number_in(texts[0]);
    const auto [rows, winner] = compare(sample, fits);
    ASSERT_EQ(rows.size(), results.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto [word, number] = told(rows[i]);
      const std::size_t slash = results[i].find('/');
      EXPECT_EQ(word, results[i].substr(0, slash)) << i;
      const bool has_number = slash != std::string::npos;
      EXPECT_NEAR(number, has_number ? test::number_in(results[i].substr(slash + 1)) : 0, 1e-5)
          << i;
    }
    EXPECT_EQ(winner ? std::to_string(winner->row) : "none", words(row[2])[0]);
    if (!winner) continue;
    EXPECT_NEAR(winner->significance, test::number_in(words(row[2])[1]), 1e-5);
    EXPECT_EQ(winner->is_base, fits[winner->row].request.model == model_code::weibull2);
  }
}

// Criteria of real fits, from the likelihoods of the reference book.
TEST(Comparison, CriteriaAreThoseOfTheirLikelihoods) {
  test::RandomNumbers random(3);
  const auto rows = test::draws(random, test::weibull5c(4, 1000, 1.5, 60, 0.3), 80, 0.3);
  const Sample sample = make_sample(rows, RankKind::benard);
  const double units = sample.total_failures + sample.total_suspensions;
  Companion companion;
  std::vector<ComparedFit> fits = {fit_of("354=0")};
  std::vector<std::pair<double, double>> wanted;
  for (const char* text : {"98=-", "162c=-", "290c=-", "354c=-", "482c=-", "674=-"}) {
    fits.push_back(fit_of(text));
    const Fit found = *fit(sample, fits.back().request, companion).fit();
    fits.back().quality = found.quality;
    const auto deviance =
        static_cast<double>(-2 * test::ln_likelihood_of(found.life, sample, true));
    const int k = find_model(fits.back().request.model)->free_parameters;
    wanted.emplace_back(deviance + 2 * k, deviance + k * std::log(units));
  }
  const Comparison comparison = compare(sample, fits);
  EXPECT_FALSE(comparison.rows[0].aic) << "its likelihood is one of other data";
  for (std::size_t i = 1; i < fits.size(); ++i) {
    EXPECT_NEAR(comparison.rows[i].aic.value_or(0), wanted[i - 1].first, 1e-7);
    EXPECT_NEAR(comparison.rows[i].bic.value_or(0), wanted[i - 1].second, 1e-7);
  }
  EXPECT_EQ(comparison.winner->row, 4U) << "the model of the truth";
}

}  // namespace
}  // namespace tavlo
