// Legend: which symbol and line belong to which plot set.
#pragma once

#include <string>
#include <vector>

#include "chart/parts/crowding.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/canvas.h"

namespace tavlo {

/// When the legend is shown; `Mode` of its item. Other values count as `automatic`.
namespace legend_mode {
inline constexpr int never = 0;
inline constexpr int automatic = 1;  ///< with two or more plot sets
inline constexpr int always = 2;
}  // namespace legend_mode

struct LegendEntry {
  ChartMarker look;  ///< of line and symbol
  std::string title;
  std::string fit;  ///< behind the title; where there is no room, this is the last to go
  bool has_line = false;
  bool has_symbol = false;
};

/// The colours that an item is drawn in. The factory's legend holds white on a
/// near-black that nobody has chosen: it is drawn as black on white.
ChartItem with_readable_colours(ChartItem item);

/// "W2P/mle", as the fits are called on the command line.
std::string fit_name(const FitResult& fit);

/// One entry for each plot set that shows a line or symbols; empty when the
/// legend's mode leaves it out. Plot sets of one data set are told apart by the
/// names of their fits.
std::vector<LegendEntry> legend_entries(const Session& session, const Chart& chart,
                                        const std::vector<PlotSet>& sets);

/// Draws the entries in a box, one line each, and notes its area. A legend that
/// the user hasn't moved (`Left` and `Top` are 0) stands in the lower right of the
/// plot box, or elsewhere when it would hide points or lines there. Letters and
/// lines shrink where the plot hasn't the room.
void draw_legend(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                 const Obstacles& content);

}  // namespace tavlo
