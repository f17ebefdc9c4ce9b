#include "actions/slope_question.h"

#include <cmath>
#include <string>

#include "numerics/elementary.h"
#include "numerics/number_text.h"

namespace tavlo {

std::optional<double> ask_slope(Prompts& prompts, ErrorReporter& reporter,
                                const NumberPunctuation& punctuation, double suggestion) {
  constexpr int digits = 6;
  const auto entry =
      prompts.ask_line("Enter Weibull Slope",
                       "Please enter the Weibull Slope for Weibayes.\nExponential:  Enter '1'\n"
                       "Rayleigh:     Enter '2'",
                       suggestion > 0 ? number_text(suggestion, digits) : "");
  if (!entry) return std::nullopt;
  const double number = fd_Str2Dbl(reporter, with_decimal_point(*entry, punctuation));
  const double slope = fd_Round(reporter, std::fabs(number), digits).value;
  if (slope == 0) return std::nullopt;
  return slope;
}

}  // namespace tavlo
