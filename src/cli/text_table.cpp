#include "cli/text_table.h"

#include <algorithm>

namespace tavlo::cli {

namespace {

/// Columns on the screen: bytes but those that continue a UTF-8 character.
std::size_t shown_width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace

std::string TextTable::text(std::size_t left_columns) const {
  std::vector<std::size_t> widths(rows_.front().size());
  for (const auto& row : rows_)
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], shown_width(row[i]));
  std::string lines;
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string gap(widths[i] - shown_width(row[i]), ' ');
      line += "  " + (i < left_columns ? row[i] + gap : gap + row[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    lines += line + "\n";
  }
  return lines;
}

}  // namespace tavlo::cli
