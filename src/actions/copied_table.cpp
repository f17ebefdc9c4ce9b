#include "actions/copied_table.h"

#include <algorithm>
#include <string_view>

#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr std::string_view html_head =
    "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"></head><body>\n<table>\n";
constexpr std::string_view html_end = "</table>\n</body></html>\n";

std::string on_one_line(std::string text) {
  for (char& c : text)
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  return text;
}

void add_escaped(std::string& html, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&': html += "&amp;"; break;
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      default: html += c;
    }
  }
}

class TableCopy {
 public:
  TableCopy(const CellTable& table, const GridBlock& block, const NumberPunctuation& punctuation)
      : table_(table), block_(block), punctuation_(punctuation) {}

  ClipboardText take() {
    made_.html = html_head;
    const bool is_one_cell =
        block_.first_row == block_.last_row && block_.first_column == block_.last_column;
    if (!is_one_cell && block_.first_row > 0) add_row(0);
    for (int row = block_.first_row; row <= block_.last_row; ++row) add_row(row);
    made_.html += html_end;
    return std::move(made_);
  }

 private:
  void add_row(int row) {
    made_.html += "<tr>";
    for (int column = block_.first_column; column <= block_.last_column; ++column) {
      if (column > block_.first_column) made_.plain += '\t';
      add_cell(on_one_line(table_.text(row, column)), row == 0);
    }
    made_.plain += "\r\n";
    made_.html += "</tr>\n";
  }

  void add_cell(std::string text, bool is_heading) {
    const bool is_number = !is_heading && parse_number(text).has_value();
    if (is_number) std::replace(text.begin(), text.end(), '.', punctuation_.DecimalPoint);
    made_.plain += text;
    made_.html += is_heading ? "<th>" : is_number ? "<td align=\"right\">" : "<td>";
    add_escaped(made_.html, text);
    made_.html += is_heading ? "</th>" : "</td>";
  }

  const CellTable& table_;
  GridBlock block_;
  const NumberPunctuation& punctuation_;
  ClipboardText made_;
};

}  // namespace

ClipboardText copied_table(const CellTable& table, const GridBlock& block,
                           const NumberPunctuation& punctuation) {
  return TableCopy(table, block, punctuation).take();
}

}  // namespace tavlo
