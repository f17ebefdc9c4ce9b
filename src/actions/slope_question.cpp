#include "actions/slope_question.h"

#include <charconv>
#include <cmath>
#include <string>

#include "files/text_lines.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

/// The shortest text that reads back as the very number: to press Enter changes nothing.
std::string exact_text(double number) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, number);
  return {text, end.ptr};
}

constexpr const char* question =
    "Please enter the Weibull Slope for Weibayes.\nExponential:  Enter '1'\n"
    "Rayleigh:     Enter '2'";

std::string correction(const std::string& entry) {
  constexpr std::size_t most_shown = 40;
  const std::string shown = entry.size() <= most_shown ? "'" + entry + "'" : "That text";
  return shown + " is no slope: it takes one number from 0.000001 to 1000000.\n\n" + question;
}

}  // namespace

bool is_slope(double slope) { return slope >= 1e-6 && slope <= 1e6; }

std::optional<double> ask_slope(Prompts& prompts, const NumberPunctuation& punctuation,
                                double suggestion) {
  std::string text = question;
  std::string offer = suggestion > 0 ? exact_text(suggestion) : "";
  for (;;) {
    const auto answer = prompts.ask_line("Enter Weibull Slope", text, offer);
    const std::string typed = answer.value_or("");
    const std::string entry(trimmed(typed));
    if (entry.empty()) return std::nullopt;
    const auto number = parse_number(with_decimal_point(entry, punctuation));
    if (number && *number == 0) return std::nullopt;
    if (number && is_slope(std::fabs(*number))) return std::fabs(*number);
    text = correction(entry);
    offer = entry;
  }
}

}  // namespace tavlo
