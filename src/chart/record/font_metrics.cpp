#include "chart/record/font_metrics.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "chart/record/spelled_letters.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

#include "chart/record/font_widths.inc"

constexpr double units_per_em = 2048.0;
constexpr double line_height = (1854.0 + 434.0 + 67.0) / units_per_em;  // ascent, descent, gap

double width_of(char character, const std::array<std::uint16_t, 224>& widths) {
  const auto code = static_cast<unsigned char>(character);
  return code < 32 ? 0.0 : widths[static_cast<std::size_t>(code) - 32];
}

/// Width in font units of the characters that the table lacks; they stand in the
/// converted text as question marks already.
double unknown_width(std::string_view lost, double question_mark) {
  double width = 0;
  while (!lost.empty()) {
    next_code_point(lost);
    width += units_per_em - question_mark;
  }
  return width;
}

}  // namespace

TextExtent MetricTextMeasure::measure(const std::string& utf8, const FontChoice& font) {
  const auto& widths = font.bold ? bold_widths : regular_widths;
  std::string lost;
  double width = 0;
  for (const char character : ansi_from_utf8(with_latin_letters(utf8), &lost))
    width += width_of(character, widths);
  width += unknown_width(lost, width_of('?', widths));
  return {width / units_per_em * font.size_points, line_height * font.size_points};
}

}  // namespace tavlo
