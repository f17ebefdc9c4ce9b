// Font metrics: how wide a text is in Arial (and in every face with its metrics,
// as Liberation Sans), from a table of the program's own. Charts composed with it
// are the same on every machine, whatever fonts are installed there.
#pragma once

#include "ports/text_measure.h"

namespace tavlo {

/// Knows the regular and the bold face; other faces are measured as these. A
/// character outside Windows-1252 counts as one em, the line as 1.149 em high.
class MetricTextMeasure : public TextMeasure {
 public:
  TextExtent measure(const std::string& utf8, const FontChoice& font) override;
};

}  // namespace tavlo
