// Parameter table: the fitted values of a chart as lines of text cells, ready to
// be drawn in the parameter box.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "chart/parts/plot_sets.h"

namespace tavlo {

namespace table_column {
inline constexpr std::size_t label = 0;
inline constexpr std::size_t set = 1;         ///< sub-populations that the row acts in
inline constexpr std::size_t population = 2;  ///< share of all units
inline constexpr std::size_t first = 3;
inline constexpr std::size_t second = 4;
inline constexpr std::size_t minimum_life = 5;
inline constexpr std::size_t count = 6;
}  // namespace table_column

struct TableLine {
  std::array<std::string, table_column::count> cells;
  bool names_columns = false;
  bool names_fit = false;  ///< its values follow
  std::string title;       ///< before heading or remark; cut where these have no room else
  std::string heading;     ///< of a data set; runs over all columns
  std::string remark;      ///< about the fit above; runs over all columns
  std::string quality;     ///< behind the last column
};

struct ParameterTable {
  std::vector<TableLine> lines;
  /// Columns that say the same for every fit (1 or 0) are not shown.
  std::array<bool, table_column::count> shown{};
  bool numbers_at_right = false;  ///< columns but the first end at their right edge
};

inline constexpr std::size_t most_table_lines = 50;

/// Says so where the line and the points of a fit have different kinds of ranks; else
/// empty.
std::string ranks_remark(const FitResult& fit, const DataSet& data);

/// Leaves only lines that a table may have; a mark says that there were more.
void limit_lines(std::vector<TableLine>& lines, std::size_t most);

/// At most 50 lines. Values have `DigitsParBox` significant digits.
ParameterTable parameter_table(const Session& session, const std::vector<PlotSet>& sets);

}  // namespace tavlo
