// Chart types: the factory charts that a user chooses from by name.
#pragma once

#include <span>
#include <string_view>

#include "project/chart_records.h"

namespace tavlo {

/// The entry of the list that stands for a profile file of the user's choice.
inline constexpr const char* browse_chart_type = "(Browse)";

/// The type whose charts stand beside those of other programs in a report.
inline constexpr const char* report_chart_type = "Report";
/// Of a chart with the Report look on a page that has its fits in a table too.
inline constexpr const char* page_chart_type = "Report page";

/// The names in the order of the list.
std::span<const char* const> chart_types();

/// The factory chart of a type, its name in `Profile`, without an identity. A
/// name without paper of its own gives the standard chart.
Chart chart_of_type(std::string_view name);

/// True for a type that says nothing of the scales and limits of the axes.
bool is_only_looks(std::string_view type);

/// The types that a chart of any paper can have: the standard one and those that are
/// only looks.
std::span<const char* const> chart_looks();
bool is_chart_look(std::string_view type);

/// The name of the list that reads so in any mixture of capitals and small letters;
/// null when there is none.
const char* find_chart_type(std::string_view name);

/// What a chart that a user starts with has before the factory's: lines that show how
/// close the points lie, where the first of the factory is a bar that hides them, and
/// automatic limits that fit the data.
void make_usual(Chart& chart);

}  // namespace tavlo
