// Shown rich text: a rich text as one line that a person can compare. "<b24 #ff0000 Times>" in
// front of text whose style is another than that before, "<20>" being the log's own; ";" for a
// line end; rows as "[964,1964: a | b ]".
#pragma once

#include <cstdio>
#include <string>

#include "project/rich_text.h"

namespace tavlo::test {

class RichTextShow : public RichTextVisitor {
 public:
  std::string shown;

  void text(std::string_view text, const TextStyle& style, const std::string& font) override {
    if (style != last_) shown += "<" + name(style) + (style.font ? " " + font : "") + ">";
    last_ = style;
    shown += text;
  }
  void line_end() override { shown += ";"; }
  void begin_row(std::span<const int> right_edges) override {
    std::string edges;
    for (const int edge : right_edges) edges += "," + std::to_string(edge);
    shown += "[" + edges.substr(1) + ": ";
  }
  void end_cell() override { shown += " | "; }
  void end_row() override { shown.replace(shown.size() - 2, 2, "]"); }

 private:
  static std::string name(const TextStyle& style) {
    std::string name = style.bold ? "b" : "";
    name += style.italic ? "i" : "";
    name += style.underline ? "u" : "";
    name += std::to_string(style.half_points);
    if (style.colour == automatic_colour) return name;
    char colour[12];
    std::snprintf(colour, sizeof colour, "#%06x", style.colour);
    return name + " " + colour;
  }

  TextStyle last_;
};

inline std::string shown(const RichText& text) {
  RichTextShow show;
  text.visit(show);
  return show.shown;
}

}  // namespace tavlo::test
