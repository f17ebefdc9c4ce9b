#include "chart/parts/symbols.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
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

/// A symbol of 6 pixels with a pen of one pixel, as the darkness of 9 x 9 pixels.
using Picture = std::array<double, 81>;

double ink_near(const std::vector<Place>& line, double x, double y, double units) {
  double nearest = 1e9;
  for (std::size_t i = 1; i < line.size(); ++i) {
    for (int step = 0; step <= 40; ++step) {
      const double at = step / 40.0;
      nearest = std::min(nearest, std::hypot(line[i - 1].x + at * (line[i].x - line[i - 1].x) - x,
                                             line[i - 1].y + at * (line[i].y - line[i - 1].y) - y));
    }
  }
  return std::clamp(1.0 - nearest / units, 0.0, 1.0);
}

std::vector<Place> outline(const Record& record) {
  if (const auto* line = std::get_if<Polyline>(&record)) return line->places;
  std::vector<Place> places;
  if (const auto* polygon = std::get_if<Polygon>(&record)) {
    places = polygon->places;
    places.push_back(places.front());
    return places;
  }
  const Ellipse& box = std::get<Ellipse>(record);
  for (int i = 0; i <= 48; ++i)
    places.push_back({static_cast<std::int32_t>(box.right * std::cos(i * 0.1309)),
                      static_cast<std::int32_t>(box.bottom * std::sin(i * 0.1309))});
  return places;
}

Picture picture_of(int symbol) {
  constexpr double pixel = 25;  // 150 units are 6 pixels
  DrawingRecord drawing;
  Recorder recorder(drawing);
  SymbolStamp(symbol, 150).draw(recorder, {0, 0});
  Picture picture{};
  for (int i = 0; i < 81; ++i) {
    const double x = (i % 9 - 4) * pixel, y = (i / 9 - 4) * pixel;
    double& dark = picture[static_cast<std::size_t>(i)];
    for (const Record& record : drawing.records)
      dark = std::max(dark, ink_near(outline(record), x, y, pixel));
    if (is_solid_symbol(symbol) && std::hypot(x, y) < 70) dark = 1;
  }
  return picture;
}

TEST(Symbols, AreToldApartAtSixPixels) {
  std::vector<Picture> pictures;
  for (int symbol = 1; symbol <= 27; ++symbol) pictures.push_back(picture_of(symbol));
  for (std::size_t a = 0; a < pictures.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      double square = 0;
      for (std::size_t i = 0; i < 81; ++i)
        square += (pictures[a][i] - pictures[b][i]) * (pictures[a][i] - pictures[b][i]);
      EXPECT_GT(std::sqrt(square), 1.2) << b + 1 << " and " << a + 1;
    }
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
