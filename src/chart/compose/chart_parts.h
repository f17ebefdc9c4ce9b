// Chart parts: what a person means who points at a place of the chart.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

enum class ChartPart { boxes, titles, x_axis, y_axis, plot_sets, insets, notes };

/// The part at a place given in logical units of the chart's drawing. Legend and
/// parameter box are insets; the inside of the plot belongs to a plot set within
/// `reach` units of its points and lines, and elsewhere to the boxes.
ChartPart chart_part_at(const Session& session, const Chart& chart, const DrawingRecord& drawing,
                        drawing::Place place, double reach);

}  // namespace tavlo
