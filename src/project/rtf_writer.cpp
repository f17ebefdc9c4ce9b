#include "project/rtf_writer.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr int left_of_tables = 36;  // twips

/// Half an inch beside the text, so that the widest table of a comparison stays on the page.
constexpr const char* margins = "\\margl720\\margr720";

constexpr auto needs_no_escape = [](char c) {
  return c >= ' ' && c < '\x7F' && c != '\\' && c != '{' && c != '}';
};

void append_byte(std::string& rtf, int byte) {
  constexpr std::string_view digits = "0123456789abcdef";
  rtf += "\\'";
  rtf += digits[static_cast<std::size_t>(byte / 16)];
  rtf += digits[static_cast<std::size_t>(byte % 16)];
}

/// A unit of UTF-16 as the signed number that RTF wants, and "?" for readers that don't know it.
void append_unit(std::string& rtf, char32_t unit) {
  const int number = static_cast<int>(unit);
  rtf += "\\u" + std::to_string(number > 0x7FFF ? number - 0x10000 : number) + "?";
}

void append_unicode(std::string& rtf, char32_t code) {
  if (code < 0x10000) return append_unit(rtf, code);
  const char32_t rest = code - 0x10000;
  append_unit(rtf, 0xD800 + (rest >> 10));
  append_unit(rtf, 0xDC00 + (rest & 0x3FF));
}

void append_escaped(std::string& rtf, char32_t code) {
  const int byte = ansi_byte(code);
  if (code == '\n') {
    rtf += "\\par ";
  } else if (code == '\t') {
    rtf += "\\tab ";
  } else if (code == '\\' || code == '{' || code == '}') {
    rtf += '\\';
    rtf += static_cast<char>(code);
  } else if (byte < 0) {
    append_unicode(rtf, code);
  } else if (byte >= ' ') {
    append_byte(rtf, byte);
  }
}

void append_text(std::string& rtf, std::string_view text) {
  while (!text.empty()) {
    const auto end = std::find_if_not(text.begin(), text.end(), needs_no_escape);
    const auto length = static_cast<std::size_t>(end - text.begin());
    rtf += text.substr(0, length);
    text.remove_prefix(length);
    if (text.empty()) return;
    const char32_t code = next_code_point(text);
    append_escaped(rtf, code == '\r' && !text.starts_with('\n') ? '\n' : code);
  }
}

}  // namespace

void RtfWriter::text(std::string_view text, const TextStyle& style, const std::string& font) {
  leave_table();
  change_style(style, font);
  append_text(body_, text);
}

void RtfWriter::line_end() {
  leave_table();
  body_ += in_row_ ? "\\line " : "\\par\r\n";
}

void RtfWriter::leave_table() {
  if (behind_row_) body_ += "\\pard ";
  behind_row_ = false;
}

void RtfWriter::begin_row(std::span<const int> right_edges) {
  body_ += "\\trowd\\trgaph108\\trleft" + std::to_string(left_of_tables);
  for (const int edge : right_edges) body_ += "\\cellx" + std::to_string(left_of_tables + edge);
  body_ += "\\pard\\intbl ";
  in_row_ = true;
  behind_row_ = false;
}

void RtfWriter::end_cell() { body_ += "\\cell "; }

void RtfWriter::end_row() {
  body_ += "\\row\r\n";
  in_row_ = false;
  behind_row_ = true;
}

void RtfWriter::change_style(const TextStyle& style, const std::string& font) {
  const std::size_t before = body_.size();
  change_mark(pen_.bold, style.bold, "\\b", "\\b0");
  change_mark(pen_.italic, style.italic, "\\i", "\\i0");
  change_mark(pen_.underline, style.underline, "\\ul", "\\ulnone");
  if (style.font != pen_.font) change_number(pen_font_, place_of_font(font), "\\f");
  if (style.colour != pen_.colour)
    change_number(pen_colour_, place_of_colour(style.colour), "\\cf");
  std::size_t half_points = pen_.half_points;
  change_number(half_points, style.half_points, "\\fs");
  pen_ = style;
  if (body_.size() != before) body_ += ' ';
}

void RtfWriter::change_mark(bool& now, bool to, std::string_view on, std::string_view off) {
  if (now != to) body_ += to ? on : off;
  now = to;
}

void RtfWriter::change_number(std::size_t& now, std::size_t to, std::string_view word) {
  if (now == to) return;
  body_ += word;
  body_ += std::to_string(to);
  now = to;
}

std::size_t RtfWriter::place_of_font(const std::string& font) {
  const auto [found, is_new] = place_of_font_.try_emplace(font, fonts_.size());
  if (is_new) fonts_.push_back(font);
  return found->second;
}

std::size_t RtfWriter::place_of_colour(std::uint32_t colour) {
  const auto [found, is_new] = place_of_colour_.try_emplace(colour, colours_.size());
  if (is_new) colours_.push_back(colour);
  return found->second;
}

std::string RtfWriter::document() const {
  std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl";
  for (std::size_t i = 0; i < fonts_.size(); ++i) {
    rtf += "{\\f" + std::to_string(i) + "\\fnil ";
    append_text(rtf, fonts_[i]);
    rtf += ";}";
  }
  rtf += "}";
  if (colours_.size() > 1) rtf += "{\\colortbl ;";
  for (std::size_t i = 1; i < colours_.size(); ++i)
    rtf += "\\red" + std::to_string(colours_[i] >> 16 & 0xFF) + "\\green" +
           std::to_string(colours_[i] >> 8 & 0xFF) + "\\blue" + std::to_string(colours_[i] & 0xFF) +
           ";";
  if (colours_.size() > 1) rtf += "}";
  rtf += margins;
  rtf += "\r\n\\f0\\fs20 ";
  rtf.reserve(rtf.size() + body_.size() + 20);
  rtf += body_;
  rtf += behind_row_ ? "\\pard\\par\r\n}" : "\\par\r\n}";
  return rtf;
}

std::string rtf_text(std::string_view text) {
  std::string rtf;
  append_text(rtf, text);
  return rtf;
}

}  // namespace tavlo
