#include "project/html_text.h"

#include <cstdio>
#include <string_view>

namespace tavlo {

namespace {

void append_escaped(std::string& html, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      case '&': html += "&amp;"; break;
      case '"': html += "&quot;"; break;
      case '\'': html += "&#39;"; break;
      case '\n':
      case '\t': html += c; break;
      default:
        if (const auto code = static_cast<unsigned char>(c); code >= 0x20 && code != 0x7F)
          html += c;
    }
  }
}

/// The style as CSS; empty for the log's own.
std::string css(const TextStyle& style, const std::string& font) {
  std::string css;
  if (style.bold) css += "font-weight:bold;";
  if (style.italic) css += "font-style:italic;";
  if (style.underline) css += "text-decoration:underline;";
  if (style.half_points != TextStyle{}.half_points)
    css += "font-size:" + std::to_string(style.half_points / 2) +
           (style.half_points % 2 == 0 ? "pt;" : ".5pt;");
  if (style.colour != automatic_colour) {
    char colour[16];
    std::snprintf(colour, sizeof colour, "#%06x", style.colour & 0xFFFFFFU);
    css += std::string("color:") + colour + ";";
  }
  const bool is_quotable = font.find_first_of("'\\") == font.npos;
  if (style.font != 0 && is_quotable) css += "font-family:'" + font + "';";
  return css;
}

class HtmlWriter : public RichTextVisitor {
 public:
  void text(std::string_view text, const TextStyle& style, const std::string& font) override {
    end_table();
    const std::string look = css(style, font);
    if (!look.empty()) {
      html_ += "<span style=\"";
      append_escaped(html_, look);
      html_ += "\">";
    }
    append_escaped(html_, text);
    if (!look.empty()) html_ += "</span>";
  }
  void line_end() override {
    end_table();
    html_ += "<br>";
  }
  void begin_row(std::span<const int>) override {
    html_ += is_behind_row_ ? "<tr><td>" : "<table><tr><td>";
    is_behind_row_ = false;
  }
  void end_cell() override { html_ += "</td><td>"; }
  void end_row() override {
    constexpr std::string_view begun_cell = "<td>";
    html_.erase(html_.size() - begun_cell.size());
    html_ += "</tr>";
    is_behind_row_ = true;
  }

  std::string document() {
    end_table();
    return "<html><head><meta charset=\"utf-8\"></head>\n<body style=\"white-space:pre-wrap\">" +
           html_ + "</body></html>\n";
  }

 private:
  void end_table() {
    if (is_behind_row_) html_ += "</table>";
    is_behind_row_ = false;
  }

  std::string html_;
  bool is_behind_row_ = false;
};

}  // namespace

std::string html_escaped(std::string_view text) {
  std::string html;
  append_escaped(html, text);
  return html;
}

std::string html_text(const RichText& text) {
  HtmlWriter writer;
  text.visit(writer);
  return writer.document();
}

}  // namespace tavlo
