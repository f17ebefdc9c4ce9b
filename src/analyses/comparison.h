// Comparison: fits of one data set side by side, and what speaks for each. Regressions are
// judged by their critical r squared; likelihoods by the likelihood-ratio test against the
// two-parameter Weibull, and by the criteria of Akaike and Schwarz.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "analyses/critical_r_squared.h"
#include "fit/request.h"

namespace tavlo {

/// A fit that is compared.
struct ComparedFit {
  FitRequest request;
  std::optional<double> quality;  ///< r squared or ln L; none where it has none of its own
};

/// What the likelihood-ratio test says of a fit.
enum class RatioTest : std::int8_t {
  none,            ///< is not asked of such a model or method, or there is no base
  base,            ///< the two-parameter Weibull, which the others are tested against
  contained,       ///< of a slope given by the model: the base contains it
  incommensurate,  ///< its likelihood leaves the suspensions out that the base takes in
  tested,
};

struct ComparedRow {
  RatioTest test = RatioTest::none;
  int df = 0;         ///< parameters more than the base; of a tested row
  double chance = 0;  ///< 0 to 1, that the gain in likelihood is none of chance; of a tested row
  std::optional<CriticalRSquared> straightness;  ///< of a regression that has a table
  // Of likelihoods that take all units in; the smaller the better.
  std::optional<double> aic;
  std::optional<double> bic;  ///< with the number of units, suspensions included
};

struct Winner {
  std::size_t row = 0;      ///< of the fits
  double significance = 0;  ///< the best chance of all tested; 0 where none was
  bool is_base = false;
};

struct Comparison {
  std::vector<ComparedRow> rows;  ///< one for each fit, in their order
  std::optional<Winner> winner;   ///< none without a base

  bool has_tested_row() const;
  /// The regression with the highest percentile of r squared (PVE), the first of equal ones;
  /// none where fewer than two fits have one.
  std::optional<std::size_t> straightest() const;
};

/// Compares fits of one sample. A model without a routine of its own is tested on the
/// likelihood of the searched one with as many parameters, and not at all without it. The best
/// chance wins when it is above 0.5, else the base. A regression with r squared of 0 or less,
/// or of 1, has no critical value.
Comparison compare(const Sample& sample, std::span<const ComparedFit> fits);

}  // namespace tavlo
