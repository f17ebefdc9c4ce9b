// Compare: many models fitted to one data set by one method and set side by side in the log, as
// a table with what speaks for each, and the winner of the likelihood-ratio test.
#pragma once

#include <cstdint>
#include <span>

#include "project/session.h"

namespace tavlo {

/// A model that can be ticked for a comparison, in the order of its boxes.
struct ComparedModel {
  const char* caption;  ///< with "&" in front of the letter that ticks it
  std::int16_t code;
};
std::span<const ComparedModel> compared_models();

/// Fits the models (codes) to the data set by the method, together with what its fit set holds,
/// and writes the comparison into the log: one step. By maximum likelihood the two-parameter
/// Weibull is always among them, as the base of the test. Nothing where there is no such data
/// set, and while its panel is busy. The charts that follow the last fit show the winner of the
/// test, or the regression with the highest PVE.
void Dist_Analysis(Session& session, int data_index, std::int16_t method_code,
                   std::span<const std::int16_t> models);

/// Writes the table of all fits of gFit(index) into the log: with the likelihood-ratio test and
/// its winner, or with critical r squared and PVE.
void Dist_Summary(Session& session, int index, bool lr_test);

/// A chance above 0.5 as a percentage: as many nines as it has behind the point, and one digit
/// more, "99.97" for 0.999735. No more than 16 characters.
std::string significance_text(double chance);

}  // namespace tavlo
