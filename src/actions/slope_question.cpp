#include "actions/slope_question.h"

#include <charconv>
#include <cmath>
#include <string>

namespace tavlo {
namespace {

/// The shortest text that reads back as the very number: to press Enter changes nothing.
std::string exact_text(double number) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, number);
  return {text, end.ptr};
}

}  // namespace

std::optional<double> ask_slope(Prompts& prompts, ErrorReporter& reporter,
                                const NumberPunctuation& punctuation, double suggestion) {
  const auto entry =
      prompts.ask_line("Enter Weibull Slope",
                       "Please enter the Weibull Slope for Weibayes.\nExponential:  Enter '1'\n"
                       "Rayleigh:     Enter '2'",
                       suggestion > 0 ? exact_text(suggestion) : "");
  if (!entry) return std::nullopt;
  const double slope = std::fabs(fd_Str2Dbl(reporter, with_decimal_point(*entry, punctuation)));
  if (slope == 0 || !std::isfinite(slope)) return std::nullopt;
  return slope;
}

}  // namespace tavlo
