#include "chart/parts/symbols.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

namespace tavlo {
namespace {

using namespace drawing;

TEST(Symbols, TakeTheirSizeAroundTheirPlaceAndDiffer) {
  std::set<std::pair<std::string, bool>> looks;
  for (int symbol = 1; symbol <= 27; ++symbol) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    SymbolStamp(symbol, 150).draw(recorder, {1000, 2000});
    std::string look;
    std::int32_t widest = 0;
    const auto add = [&](Place place) {
      look += std::to_string(place.x) + "," + std::to_string(place.y) + ";";
      widest = std::max({widest, std::abs(place.x - 1000), std::abs(place.y - 2000)});
    };
    for (const Record& record : drawing.records) {
      look += std::to_string(record.index()) + ":";
      if (const auto* ellipse = std::get_if<Ellipse>(&record)) {
        add({ellipse->left, ellipse->top});
        add({ellipse->right, ellipse->bottom});
      } else if (const auto* polygon = std::get_if<Polygon>(&record)) {
        for (const Place& place : polygon->places) add(place);
      } else {
        for (const Place& place : std::get<Polyline>(record).places) add(place);
      }
    }
    EXPECT_GE(widest, 50) << symbol;
    EXPECT_LE(widest, 87) << symbol;
    EXPECT_TRUE(looks.emplace(look, is_solid_symbol(symbol)).second) << symbol;
  }
}

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
