// Pen look: what a person chooses of a line.
#pragma once

#include <cstdint>

#include "project/chart_records.h"

namespace tavlo {

struct PenLook {
  std::int32_t colour = 0;  ///< red in the low byte
  std::int32_t style = pen_style::solid;
  std::int32_t width = 1;  ///< logical units
  friend bool operator==(const PenLook&, const PenLook&) = default;
};

}  // namespace tavlo
