// Symbols: the 27 marks that data points are drawn with.
#pragma once

#include <vector>

#include "chart/record/drawing_record.h"
#include "chart/record/recorder.h"

namespace tavlo {

/// Whether the number is one of a symbol.
bool is_symbol(int symbol);

/// Numbers of the symbols that are filled with their own line colour.
bool is_solid_symbol(int symbol);

/// One symbol of one size, to be drawn at many places.
class SymbolStamp {
 public:
  /// `size` is the full width in logical units. A number outside 1..27 draws nothing.
  SymbolStamp(int symbol, int size);

  /// Draws with the pen and brush that are selected.
  void draw(Recorder& recorder, drawing::Place centre) const;
  std::size_t record_count() const { return parts_.size() + 1; }

 private:
  std::vector<drawing::Record> parts_;  // around the origin
};

}  // namespace tavlo
