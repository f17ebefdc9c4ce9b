#include "chart/report/html_report.h"

#include <algorithm>
#include <string_view>

#include "project/html_text.h"

namespace tavlo {

namespace {

constexpr std::string_view style = R"(
body { font: 10.5pt/1.45 "Helvetica Neue", Arial, "Liberation Sans", sans-serif; color: #1c1c1c;
  background: #fff; max-width: 190mm; margin: 12mm auto; padding: 0 6mm; }
h1 { font-size: 20pt; line-height: 1.2; margin: 0 0 3mm; overflow-wrap: anywhere; }
h2 { font-size: 13pt; margin: 8mm 0 2mm; padding-bottom: 1mm; border-bottom: 1px solid #0072b2;
  break-after: avoid; }
table { border-collapse: collapse; margin: 0 0 2mm; width: 100%; font-variant-numeric: tabular-nums; }
caption { text-align: left; font-weight: bold; padding: 2mm 0 1mm; overflow-wrap: anywhere; }
thead { display: table-header-group; }
tr { break-inside: avoid; }
th, td { padding: .7mm 2.5mm; text-align: right; vertical-align: top; }
th { border-bottom: 1.5px solid #666; font-weight: bold; }
td { border-bottom: 1px solid #e3e3e3; }
.t { text-align: left; overflow-wrap: anywhere; }
.sum td { font-weight: bold; border-top: 1.5px solid #666; }
.n { width: auto; min-width: 66%; }
.facts { width: auto; } .facts td { border: 0; padding: 0 4mm 0 0; text-align: left; }
.facts td:first-child { color: #666; }
p { margin: 1mm 0; } .note { color: #444; }
figure { margin: 3mm 0; break-inside: avoid; } svg { width: 100%; height: auto; display: block; }
footer { margin-top: 8mm; color: #666; font-size: 9pt; }
@media print { body { margin: 0; padding: 0; max-width: none; } }
)";

std::string element(std::string_view name, const std::string& text, std::string_view kind = "") {
  std::string html = "<" + std::string(name);
  if (!kind.empty()) html += " class=\"" + std::string(kind) + "\"";
  return html + ">" + html_escaped(text) + "</" + std::string(name) + ">";
}

std::string row_of(const ReportTable& table, const std::vector<std::string>& cells,
                   std::string_view name, bool is_total) {
  std::string html = is_total ? "<tr class=\"sum\">" : "<tr>";
  for (std::size_t i = 0; i < cells.size(); ++i)
    html += element(name, cells[i], table.is_text[i] ? "t" : "");
  return html + "</tr>\n";
}

std::string table_html(const ReportTable& table) {
  const bool has_text =
      std::find(table.is_text.begin(), table.is_text.end(), true) != table.is_text.end();
  std::string html = has_text ? "<table>" : "<table class=\"n\">";
  if (!table.title.empty()) html += element("caption", table.title);
  html += "<thead>" + row_of(table, table.headings, "th", false) + "</thead>\n<tbody>\n";
  for (const auto& row : table.rows)
    html += row_of(table, row, "td", table.has_totals && &row == &table.rows.back());
  html += "</tbody></table>\n";
  for (const std::string& remark : table.remarks) html += element("p", remark, "note") + "\n";
  return html;
}

std::string facts_html(const Report& report) {
  std::string html = "<table class=\"facts\">\n";
  for (const auto& fact : report.facts) {
    html += "<tr>";
    for (const std::string& cell : fact) html += element("td", cell);
    html += "</tr>\n";
  }
  return html + "</table>\n";
}

/// What stands before the picture itself in a file of its own has no place inside a document.
std::string inline_svg(const std::string& file) {
  const std::size_t begin = file.find("<svg");
  return begin == std::string::npos ? "" : file.substr(begin);
}

}  // namespace

std::string html_report(const Report& report, PaperSize paper,
                        const std::vector<std::string>& pictures) {
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width\">\n" +
      element("title", report.title) + "\n<style>" + std::string(style) +
      "@page { size: " + (paper == PaperSize::a4 ? "A4" : "letter") +
      "; margin: 18mm 16mm; }\n</style></head>\n<body>\n" + element("h1", report.title) + "\n" +
      facts_html(report);
  std::size_t next = 0;
  for (const ReportPart& part : report.parts) {
    html += element("h2", part.title) + "\n";
    for (std::size_t i = 0; i < part.drawings.size() && next < pictures.size(); ++i)
      html += "<figure>" + inline_svg(pictures[next++]) + "</figure>\n";
    for (const ReportTable& table : part.tables) html += table_html(table);
    for (const std::string& line : part.lines) html += element("p", line, "note") + "\n";
  }
  return html + element("footer", report.maker + ", " + report.date) + "\n</body></html>\n";
}

}  // namespace tavlo
