// Chart types: the factory charts that a user chooses from by name.
#pragma once

#include <span>
#include <string_view>

#include "project/chart_records.h"

namespace tavlo {

/// The entry of the list that stands for a profile file of the user's choice.
inline constexpr const char* browse_chart_type = "(Browse)";

/// The names in the order of the list.
std::span<const char* const> chart_types();

/// The factory chart of a type, its name in `Profile`, without an identity. A
/// name without paper of its own gives the standard chart.
Chart chart_of_type(std::string_view name);

/// True for a type that says nothing of the axes.
bool is_only_colours(std::string_view type);

/// What a chart that a user starts with has before the factory's: lines that show how
/// close the points lie, where the first of the factory is a bar that hides them, and
/// automatic limits that fit the data.
void make_usual(Chart& chart);

}  // namespace tavlo
