// TextMeasure: how much room a text takes in a font. Charts are composed with
// it, so that labels keep clear of each other at any size of the window.
#pragma once

#include <string>

namespace tavlo {

struct FontChoice {
  std::string face = "Arial";
  double size_points = 10;
  bool bold = false;
  bool italic = false;
};

/// Extent of one line of text, in points.
struct TextExtent {
  double width = 0;
  double height = 0;
};

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  virtual TextExtent measure(const std::string& utf8, const FontChoice& font) = 0;
};

}  // namespace tavlo
