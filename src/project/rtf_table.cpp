#include "project/rtf_table.h"

#include "project/rtf_writer.h"

namespace tavlo {

namespace {

const char* word_of(RowAlignment alignment) {
  switch (alignment) {
    case RowAlignment::centred: return "\\trqc";
    case RowAlignment::right: return "\\trqr";
    case RowAlignment::left: break;
  }
  return "\\trql";
}

std::string row_head(std::span<const int> widths, RowAlignment alignment) {
  std::string head = std::string("\\trowd") + word_of(alignment) + "\\trgaph108\\trleft36";
  int edge = 0;
  for (const int width : widths) head += "\\cellx" + std::to_string(edge += width);
  return head + "\\pard\\intbl";
}

}  // namespace

std::string RTF_Table(const TableRows& rows, std::span<const int> widths, RowAlignment alignment) {
  if (rows.empty() || widths.empty()) return "";
  std::string table = "\\par ";
  for (const std::vector<std::string>& row : rows) {
    table += row_head(widths, alignment);
    for (std::size_t i = 0; i < widths.size(); ++i)
      table += " " + (i < row.size() ? rtf_text(row[i]) : "") + "\\cell";
    table += "\\row";
  }
  return table + "\\pard\\par ";
}

}  // namespace tavlo
