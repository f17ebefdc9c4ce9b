// Column names: the headings that people and other programs give to times, units and
// their status, and what each of them means.
#pragma once

#include <optional>
#include <string_view>

namespace tavlo {

/// What a column is for. `censored` is a status with its meaning turned round.
/// `group` names the data set of a row in a table of many.
enum class DataColumn { x, fails, susps, status, censored, count, mode, comment, group };
inline constexpr int data_columns = 9;
inline constexpr int sheet_data_columns = 8;  ///< the first, which a data set has

/// The column that a heading names, in any case; a unit in brackets behind it does not
/// count ("Time (h)").
std::optional<DataColumn> find_column(std::string_view heading);

/// The column by the name that a person gives it in an option: "x", "status" ...
std::optional<DataColumn> find_column_role(std::string_view role);

/// "x", "status" ...
std::string_view role_of(DataColumn column);

/// "time", "failures" ... as a person calls what the column holds.
std::string_view noun_of(DataColumn column);

/// Equal without regard to the case of the letters a to z.
bool equal_in_any_case(std::string_view a, std::string_view b);

}  // namespace tavlo
