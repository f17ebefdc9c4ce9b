#include "chart/parts/fitting_text.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr float smallest_font = 8;

/// The longest beginning of the text that has room together with the ellipsis;
/// halving, for a text of any length.
std::size_t longest_beginning(TextMeasure& measure, const std::string& text, const ChartItem& item,
                              double room, double scale, const std::string& ellipsis) {
  std::size_t fits = 0;
  std::size_t too_long = text.size();
  while (too_long - fits > 1) {
    const std::size_t middle = (fits + too_long) / 2;
    const std::string begun(utf8_front(text, middle));
    const bool has_room = text_size(measure, begun + ellipsis, item, scale).width <= room;
    (has_room ? fits : too_long) = middle;
  }
  return fits;
}

}  // namespace

std::string cut_to_width(TextMeasure& measure, std::string text, const ChartItem& item, double room,
                         double scale) {
  if (text_size(measure, text, item, scale).width <= room) return text;
  const std::string ellipsis = "\u2026";
  const std::size_t length = longest_beginning(measure, text, item, room, scale, ellipsis);
  return std::string(utf8_front(text, length)) + ellipsis;
}

ChartItem fitted_to_width(TextMeasure& measure, ChartItem item, double width) {
  constexpr double slack = 0.97;  // real letters may be wider than the table of widths says
  const double room = slack * width;
  const double needed = text_size(measure, item.Text2, item).width;
  if (needed <= room) return item;
  const auto shrunk = static_cast<float>(0.995 * drawn_font_size(item.FontSize) * room / needed);
  item.FontSize = std::max(std::min(item.FontSize, smallest_font), shrunk);
  item.Text2 = cut_to_width(measure, std::move(item.Text2), item, room);
  return item;
}

}  // namespace tavlo
