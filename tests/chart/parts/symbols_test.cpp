#include "chart/parts/symbols.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

namespace tavlo {
namespace {

using namespace drawing;

TEST(Symbols, StayWithin32BitsAtTheirEdge) {
  constexpr std::int32_t edge = std::numeric_limits<std::int32_t>::max();
  for (const int symbol : {1, 2, 9}) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    SymbolStamp(symbol, 150).draw(recorder, {edge - 10, edge - 10});
    for (const Record& record : drawing.records) {
      if (const auto* ellipse = std::get_if<Ellipse>(&record))
        EXPECT_EQ(ellipse->right, edge);
      else if (const auto* polygon = std::get_if<Polygon>(&record))
        for (const Place& place : polygon->places) EXPECT_GT(place.x, edge - 100);
      else
        for (const Place& place : std::get<Polyline>(record).places) EXPECT_GT(place.y, edge - 100);
    }
  }
}

TEST(Symbols, OtherNumbersAreNoSymbol) {
  for (const int symbol : {-1, 0, 28, 30000})
    EXPECT_EQ(SymbolStamp(symbol, 150).record_count(), 0u);
  EXPECT_EQ(SymbolStamp(1, 0).record_count(), 1u);
}

}  // namespace
}  // namespace tavlo
