#include "actions/log_table.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <sstream>

#include "actions/reports.h"

namespace tavlo {

namespace {

/// Twips from the left margin, half an inch, to the part of the paper that is not printed on.
constexpr int widest_table = 10'950;
constexpr int widest_word = widest_table / 4;

/// Of a column with the text, the gaps of a cell and a little room, as letters are not drawn
/// alike everywhere.
int column_width(TextMeasure& measure, const std::string& text) {
  constexpr double twips_a_point = 20;
  constexpr int gaps = 2 * 108 + 20;
  return gaps +
         static_cast<int>(std::ceil(twips_a_point * measure.measure(text, FontChoice{}).width));
}

/// Of the widest word.
int least_width(TextMeasure& measure, const std::string& text) {
  std::istringstream words(text);
  int least = 0;
  for (std::string word; words >> word;) least = std::max(least, column_width(measure, word));
  return std::min(least, widest_word);
}

/// The widest of the columns that are wider than they must be; their number where none is.
std::size_t widest_with_room(const std::vector<int>& widths, const std::vector<int>& least) {
  std::size_t widest = widths.size();
  for (std::size_t i = 0; i < widths.size(); ++i)
    if (widths[i] > least[i] && (widest == widths.size() || widths[i] > widths[widest])) widest = i;
  return widest;
}

/// Columns give way, the widest first, until the table is no wider than paper.
void fit_on_paper(std::vector<int>& widths, const std::vector<int>& least) {
  int excess = std::accumulate(widths.begin(), widths.end(), -widest_table);
  while (excess > 0) {
    const std::size_t widest = widest_with_room(widths, least);
    if (widest == widths.size()) return;
    const int given = std::min(excess, widths[widest] - least[widest]);
    widths[widest] -= given;
    excess -= given;
  }
}

/// As wide as the widest text of each column, where there is room for that. The first column's
/// edge is not the page's.
std::vector<int> column_widths(TextMeasure& measure, const TableRows& rows) {
  constexpr int left_of_tables = 36;
  std::vector<int> widths(rows.front().size());
  std::vector<int> least(widths.size());
  for (const std::vector<std::string>& row : rows)
    for (std::size_t i = 0; i < row.size(); ++i) {
      const int left = i == 0 ? left_of_tables : 0;
      widths[i] = std::max(widths[i], left + column_width(measure, row[i]));
      least[i] = std::max(least[i], left + least_width(measure, row[i]));
    }
  fit_on_paper(widths, least);
  return widths;
}

}  // namespace

void log_table(Session& session, const TableRows& rows) {
  const std::vector<int> widths = column_widths(session.ports.text_measure, rows);
  AppendLog(session, RTF_Table(rows, widths, RowAlignment::left), true);
}

}  // namespace tavlo
