// Paper: where the rows of a sample stand on the probability paper of a model.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "fit/answer.h"

namespace tavlo {

/// The height of a fraction failed F on a paper.
enum class Paper {
  weibull,  ///< ln(-ln(1 - F))
  normal,   ///< the standard normal quantile of F
  gumbel,   ///< -ln(-ln F)
};

/// The rows of a regression. Rows that weigh nothing take no part.
struct PaperRows {
  std::vector<double> own_weight;  ///< of one mode; empty for the whole sample
  std::vector<double> own_y;
  std::span<const double> weight;  ///< failures
  std::span<const double> x;       ///< time in inner units or its logarithm
  std::span<const double> y;
};

/// The rows with failures. Every rank must have a height: see rank_off_paper().
PaperRows paper_rows(const Sample& sample, Paper paper, bool log_time);

/// The same of one failure mode, by the ranks within it, on Weibull paper.
PaperRows paper_rows_of_mode(const Sample& sample, int mode);

/// The first failure whose rank is no probability: fewer than 0.3 units in all, a fraction
/// of one under exact ranks, or too many for a float can bring one.
std::optional<Refusal> rank_off_paper(const Sample& sample);

/// The same for the failures of a mode; the rank is named as 0 or 1.
std::optional<Refusal> rank_off_paper_in_mode(const Sample& sample, int mode);

}  // namespace tavlo
