#include "actions/log_table.h"

#include <algorithm>
#include <cmath>

#include "actions/reports.h"

namespace tavlo {

namespace {

/// As wide as the widest text of each column and the gaps of a cell, and a little wider, as
/// letters are not drawn alike everywhere. The first column's edge is not the page's.
std::vector<int> column_widths(TextMeasure& measure, const TableRows& rows) {
  constexpr double twips_a_point = 20;
  constexpr int left_of_tables = 36;
  constexpr int gaps = 2 * 108 + 20;
  std::vector<int> widths(rows.front().size(), gaps);
  for (const std::vector<std::string>& row : rows)
    for (std::size_t i = 0; i < row.size(); ++i) {
      const double points = measure.measure(row[i], FontChoice{}).width;
      widths[i] = std::max(widths[i], gaps + static_cast<int>(std::ceil(twips_a_point * points)));
    }
  widths.front() += left_of_tables;
  return widths;
}

}  // namespace

void log_table(Session& session, const TableRows& rows) {
  const std::vector<int> widths = column_widths(session.ports.text_measure, rows);
  AppendLog(session, RTF_Table(rows, widths, RowAlignment::left), true);
}

}  // namespace tavlo
