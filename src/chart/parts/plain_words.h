// Plain words: how a chart for a report names fits and numbers, as people print them
// and no longer than need be.
#pragma once

#include <string>

#include "life/models.h"
#include "project/records.h"

namespace tavlo {

/// "2-parameter Weibull, maximum likelihood".
std::string plain_fit_name(const FitResult& fit);

/// "\u03B7" and "\u03B2", or the letters of another family.
struct PlainNames {
  const char* first;
  const char* second;
};
PlainNames plain_parameter_names(Family family);

/// The two numbers of a population, "not determined" where there is none: four significant
/// digits of the first, or as many as its spread is seen by, and three of the second.
struct PlainValues {
  std::string first;
  std::string second;
  std::string minimum_life;  ///< empty without one
};
PlainValues plain_values(const Model& model, const FitParam& row);

/// The digits that tell the lives of a fit apart.
int digits_of_life(const FitResult& fit);

/// A number next to a bound, which never reads as the bound itself: 0.99999995 with five digits is
/// no 1.
std::string text_beside(double value, double bound, int digits);

/// "16 %", with the decimals that keep a share from reading as none or all.
std::string plain_share(double share);

/// "r² = 0.985" of a regression, never "1" for less; "ln L = -75.13" of a likelihood,
/// whose hundredths tell two models apart.
std::string plain_quality(const FitResult& fit);
std::string plain_quality(int method, double quality);

/// "102 failures, 18 suspensions".
std::string plain_totals(const Sample& sample);

}  // namespace tavlo
