// RTF writer: a rich text as one flat RTF document of pure ASCII, so that its length in
// characters is that in bytes. Its tables name only the fonts and colours that are used.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "project/rich_text_content.h"

namespace tavlo {

/// Collects what it is shown.
class RtfWriter : public RichTextVisitor {
 public:
  void text(std::string_view text, const TextStyle& style, const std::string& font) override;
  void line_end() override;
  void begin_row(std::span<const int> right_edges) override;
  void end_cell() override;
  void end_row() override;

  /// The whole document, lines separated by CR LF. It ends with a line end that is none of
  /// the text, as word processors have it.
  std::string document() const;

 private:
  void leave_table();
  void change_style(const TextStyle& style, const std::string& font);
  void change_mark(bool& now, bool to, std::string_view on, std::string_view off);
  void change_number(std::size_t& now, std::size_t to, std::string_view word);
  std::size_t place_of_font(const std::string& font);
  std::size_t place_of_colour(std::uint32_t colour);

  std::string body_;
  bool in_row_ = false;
  bool behind_row_ = false;

  TextStyle pen_;
  std::size_t pen_font_ = 0;
  std::size_t pen_colour_ = 0;
  std::vector<std::string> fonts_{"Arial"};
  std::map<std::string, std::size_t> place_of_font_{{"Arial", 0}};
  std::vector<std::uint32_t> colours_{automatic_colour};
  std::map<std::uint32_t, std::size_t> place_of_colour_{{automatic_colour, 0}};
};

/// Text (UTF-8) as a piece of RTF: line breaks become "\par ", and characters that mean
/// something there are escaped.
std::string rtf_text(std::string_view text);

}  // namespace tavlo
