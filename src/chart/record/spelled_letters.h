// Spelled letters: the Greek letters of parameters by their names. A metafile holds
// Windows-1252 alone, which lacks them.
#pragma once

#include <string>

#include "ports/text_measure.h"

namespace tavlo {

/// "eta = 606.5" for "η = 606.5". Other letters stay as they are.
std::string with_letters_spelled(const std::string& utf8);

/// "n = 606.5": Latin letters of the same width, for a table of widths that has no others.
std::string with_latin_letters(const std::string& utf8);

/// Measures texts as a metafile will write them.
class SpelledTextMeasure : public TextMeasure {
 public:
  explicit SpelledTextMeasure(TextMeasure& measure) : measure_(measure) {}
  TextExtent measure(const std::string& utf8, const FontChoice& font) override {
    return measure_.measure(with_letters_spelled(utf8), font);
  }

 private:
  TextMeasure& measure_;
};

}  // namespace tavlo
