#include "actions/copied_table.h"

#include <algorithm>

#include "numerics/number_text.h"

namespace tavlo {

namespace {

std::string in_locale(std::string cell, const NumberPunctuation& punctuation) {
  if (parse_number(cell)) std::replace(cell.begin(), cell.end(), '.', punctuation.DecimalPoint);
  return cell;
}

/// A tab or a line break in a cell would move all that follows.
std::string on_one_line(std::string cell) {
  for (char& c : cell)
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  return cell;
}

std::string escaped(const std::string& cell) {
  std::string text;
  for (const char c : cell) switch (c) {
      case '&': text += "&amp;"; break;
      case '<': text += "&lt;"; break;
      case '>': text += "&gt;"; break;
      default: text += c;
    }
  return text;
}

std::string html_cell(const std::string& cell, bool heading, bool number) {
  const std::string tag = heading ? "th" : "td";
  return "<" + tag + (number ? " align=\"right\">" : ">") + escaped(cell) + "</" + tag + ">";
}

}  // namespace

ClipboardText copied_table(const TextRows& rows, const NumberPunctuation& punctuation) {
  ClipboardText text;
  text.html = "<meta charset=\"utf-8\"><table border=\"1\">";
  for (const auto& row : rows) {
    text.html += "<tr>";
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string cell = on_one_line(in_locale(row[i], punctuation));
      text.plain += (i == 0 ? "" : "\t") + cell;
      text.html += html_cell(cell, &row == &rows.front(), parse_number(row[i]).has_value());
    }
    text.plain += "\r\n";
    text.html += "</tr>";
  }
  text.html += "</table>";
  return text;
}

TextRows selected_with_headings(const CellTable& grid) {
  const GridBlock block = grid.selection();
  TextRows rows;
  const auto add = [&](int r) {
    auto& cells = rows.emplace_back();
    for (int c = block.first_column; c <= block.last_column; ++c) cells.push_back(grid.text(r, c));
  };
  add(0);
  for (int r = std::max(block.first_row, 1); r <= block.last_row; ++r) add(r);
  return rows;
}

}  // namespace tavlo
