// Shown fits: which fits the charts draw. A chart follows the last fit of each set that it
// shows; a person shows others beside it.
#pragma once

#include <cstdint>
#include <optional>

#include "project/session.h"

namespace tavlo {

/// The chart that the person works on or, where it doesn't show the set, the last one that
/// does, else the last one; 0 when there is none.
int chart_of_set(const Session& session, int fit_index);

/// The fit that the chart of the set follows, by its slot; 0 for none.
int followed_fit(const Session& session, int fit_index);

/// Shows a fit on every chart that follows its set, and in any case on the chart of the set:
/// the one that the person worked on last, if it shows the set, else the last one that does.
/// The axes take the paper of its model. Nothing where charts don't follow the last fit.
void follow_on_charts(Session& session, int fit_index, int slot);

/// The same for a fit that the person has picked, whatever the charts follow.
void pick_fit(Session& session, int fit_index, int slot);

/// The same on one chart alone.
void follow_on_chart(const Project& project, Chart& chart, int fit_index, int slot);

/// The colour of its line on the chart of the set, as the records keep colours; nothing when
/// the fit isn't drawn there.
std::optional<std::int32_t> shown_colour(const Session& session, int fit_index, int slot);

/// Gives its line on that chart a colour; nothing where it isn't drawn.
void set_shown_colour(Session& session, int fit_index, int slot, std::int32_t colour);

/// Draws the fit on that chart beside others, or no longer.
void set_shown(Session& session, int fit_index, int slot, bool shown);

}  // namespace tavlo
