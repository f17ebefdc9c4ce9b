// Chart view: what is seen of a chart's axes, their scales, limits and zoom. Every
// change of them comes through here, so that they always belong together: another
// paper or model ends a zoom in the view that it began with, and limits that
// somebody sets end it where it stands.
#pragma once

#include "chart/scales/plot_coordinates.h"
#include "life/models.h"
#include "project/chart_records.h"

namespace tavlo {

// --- paper

/// Puts the chart on the paper of a model. One without axes of its own is drawn on
/// the paper that the chart has.
void use_paper_of(Chart& chart, const Model& model);

/// Gives axis `index` (0 is X, 1 is Y) the scale of `code`, see life/models.h. Limits
/// that have no place on the new scale become the factory's.
void choose_scale(Chart& chart, int index, int code);

// --- limits

/// Whether a limit may be stored for a scale: it has a place there, or is the 1 of a
/// probability, which is held just below.
bool is_limit(int code, double value);

/// Sets the lower or upper limit of an axis (`&ChartAxis::Min`, `&ChartAxis::Max`).
void set_limit(Chart& chart, int index, double ChartAxis::*limit, double value);

/// Says whether a limit follows the data (`&ChartAxis::AutoMin`, `&ChartAxis::AutoMax`).
void set_automatic(Chart& chart, int index, bool ChartAxis::*automatic, bool on);

/// Lets all limits follow the data.
void follow_data(Chart& chart);

/// The limits that the data ask for, taken where they are followed.
void take_data_limits(ChartAxis& axis, Limits limits);

// --- zoom

/// Shows the part of the chart between the limits, which are held. The view of
/// before can be gone back to.
void zoom_to(Chart& chart, Limits x, Limits y);

/// Shows that part in place of the one that the last step has come to: a move of many
/// small ones is a single step. The chart is zoomed in.
void zoom_on_to(Chart& chart, Limits x, Limits y);

/// How many steps the chart is zoomed in.
std::size_t zoom_depth(const Chart& chart);

/// Back by one step. False when there is none.
bool zoom_back(Chart& chart);

/// Back to the view before the first step. False when there is none.
bool end_zoom(Chart& chart);

/// Shows `to` as another state of the same chart is seen.
void copy_view(const Chart& from, Chart& to);

}  // namespace tavlo
