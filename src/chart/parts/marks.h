// Marks: what the user has placed on a chart, texts, lines, arrows and symbols,
// as records of `Texts`. Here they are made, found under the pointer, moved and
// deleted; draw_marks draws them.
#pragma once

#include <string>

#include "chart/record/drawing_record.h"
#include "ports/text_measure.h"
#include "project/chart_records.h"

namespace tavlo {

enum class MarkKind { text, line, arrow, symbol };
MarkKind kind_of_mark(const ChartItem& mark);

/// False for an answer mark that has no place on the chart, or has not got it.
bool is_shown(const ChartItem& mark);

/// The polyline of a mark; empty for one without points.
std::vector<drawing::Place> points_of_mark(const ChartItem& mark);

/// New marks in looks that show on the factory's paper.
ChartItem text_mark(drawing::Place at, const std::string& utf8);
ChartItem line_mark(drawing::Place from, drawing::Place to);
/// Its head is at `to`.
ChartItem arrow_mark(drawing::Place from, drawing::Place to);
ChartItem symbol_mark(drawing::Place at, int symbol);

/// Adds a mark on top of the others; its index in `Texts`. Error 6 beyond 32767,
/// the most that a file can hold.
int add_mark(Chart& chart, ChartItem mark);
/// Those behind it move up. An index that is none changes nothing.
void delete_mark(Chart& chart, int index);
void move_mark(ChartItem& mark, std::int32_t right, std::int32_t down);

/// The box around the words of a mark.
drawing::Rectangle words_bounds(TextMeasure& measure, const ChartItem& mark);

/// The box around a mark, without the width of its pen.
drawing::Rectangle mark_bounds(TextMeasure& measure, const ChartItem& mark);

/// The uppermost mark within `reach` units of a place; 0 when there is none.
int mark_at(TextMeasure& measure, const Chart& chart, drawing::Place place, double reach);

}  // namespace tavlo
