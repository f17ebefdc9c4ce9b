// Block layout: where the four kinds of windows stand in the frame. The sheet is
// at the left above the log, the chart at the right above the fit panel; a
// window that is hidden leaves its room to its neighbours.
#pragma once

#include <QRect>
#include <array>

namespace tavlo {

/// The places of the layout.
enum class Block { sheet, log, chart, panel };
inline constexpr std::size_t block_count = 4;

/// The rectangle of each block in an area of that size; empty for a hidden one.
/// `line_height` is that of the program's font, which scales with the screen.
std::array<QRect, block_count> block_layout(const QSize& area, int line_height,
                                            const std::array<bool, block_count>& visible);

/// `count` strips of the area, side by side or one below the other.
QRect strip(const QSize& area, int index, int count, bool side_by_side);

}  // namespace tavlo
