#include "workspace/frame/block_layout.h"

#include <algorithm>

namespace tavlo {

namespace {

// Lengths in lines of text: the sheet shows its number columns, the panel its
// options and a few fits; the chart takes what is left.
constexpr int least_left_lines = 20;
constexpr int most_left_lines = 25;
constexpr double left_share = 0.35;
constexpr int least_bottom_lines = 16;
constexpr int most_bottom_lines = 23;
constexpr double bottom_share = 0.37;

std::size_t at(Block block) { return static_cast<std::size_t>(block); }

/// Large letters on a small screen leave the other half to the chart all the same.
int length(int whole, double share, int least, int most) {
  least = std::min(least, whole / 2);
  return std::clamp(static_cast<int>(share * whole), least, std::max(least, most));
}

}  // namespace

std::array<QRect, block_count> block_layout(const QSize& area, int line_height,
                                            const std::array<bool, block_count>& visible) {
  const auto shown = [&visible](Block block) { return visible[at(block)]; };
  const bool left = shown(Block::sheet) || shown(Block::log);
  const bool right = shown(Block::chart) || shown(Block::panel);
  const int left_width = !left    ? 0
                         : !right ? area.width()
                                  : length(area.width(), left_share, least_left_lines * line_height,
                                           most_left_lines * line_height);
  const int bottom = length(area.height(), bottom_share, least_bottom_lines * line_height,
                            most_bottom_lines * line_height);

  std::array<QRect, block_count> places;
  const auto column = [&](Block upper, Block lower, int from, int width) {
    const int lower_height = !shown(lower) ? 0 : shown(upper) ? bottom : area.height();
    const int upper_height = area.height() - lower_height;
    if (shown(upper)) places[at(upper)] = QRect(from, 0, width, upper_height);
    if (shown(lower)) places[at(lower)] = QRect(from, upper_height, width, lower_height);
  };
  column(Block::sheet, Block::log, 0, left_width);
  column(Block::chart, Block::panel, left_width, area.width() - left_width);
  return places;
}

QRect strip(const QSize& area, int index, int count, bool side_by_side) {
  const int whole = side_by_side ? area.width() : area.height();
  const int from = whole * index / count;
  const int length = whole * (index + 1) / count - from;
  return side_by_side ? QRect(from, 0, length, area.height())
                      : QRect(0, from, area.width(), length);
}

}  // namespace tavlo
