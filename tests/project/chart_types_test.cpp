#include "project/chart_types.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <set>

namespace tavlo {
namespace {

using Triple = std::array<double, 3>;

double linear_light(int byte) {
  const double c = byte / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

Triple times(const std::array<Triple, 3>& matrix, const Triple& by) {
  Triple result{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) result[i] += matrix[i][j] * by[j];
  return result;
}

// CIE 1976 L*a*b* of linear sRGB light, white D65.
Triple lab(const Triple& light) {
  const Triple xyz = times(
      {{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}}, light);
  const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
  const double x = f(xyz[0] / 0.9505), y = f(xyz[1]), z = f(xyz[2] / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

// The severe cases of G. M. Machado, M. M. Oliveira, L. A. F. Fernandes, "A
// physiologically-based model for simulation of color vision deficiency", IEEE
// Trans. Visualization and Computer Graphics 15 (2009), and the normal eye.
const std::array<std::array<Triple, 3>, 4> eyes = {{
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779},
      {-0.078411, 0.930809, 0.147602},
      {0.004733, 0.691367, 0.303900}}},
}};

/// How far apart the worst eye sees two colours.
double distance_seen(std::int32_t a, std::int32_t b) {
  const auto light = [](std::int32_t c) {
    return Triple{linear_light(c & 255), linear_light(c >> 8 & 255), linear_light(c >> 16 & 255)};
  };
  double least = 1e9;
  for (const auto& eye : eyes) {
    const Triple p = lab(times(eye, light(a))), q = lab(times(eye, light(b)));
    least = std::min(least, std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]));
  }
  return least;
}

/// The least distance among the lines of the first seven plot sets and the paper.
double least_distance(const Chart& chart) {
  std::vector<std::int32_t> colours = {chart.Boxes(chart_item::plot_box).FillColor};
  for (int i = 1; i <= 7; ++i) colours.push_back(chart.Markers(i).LineColor);
  double least = 1e9;
  for (std::size_t i = 0; i < colours.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      least = std::min(least, distance_seen(colours[i], colours[j]));
  return least;
}

TEST(ChartTypes, SafeColoursAreToldApartByEveryEye) {
  EXPECT_LT(least_distance(chart_of_type("Standard")), 8);
  EXPECT_GT(least_distance(chart_of_type("Colour-safe")), 12);
}

TEST(ChartTypes, SafePlotSetsDifferInColourLineOrSymbol) {
  const Chart chart = chart_of_type("Colour-safe");
  std::set<std::pair<int, int>> lines, symbols;
  for (int i = 1; i <= 20; ++i) {
    EXPECT_TRUE(lines.emplace(chart.Markers(i).LineColor, chart.Markers(i).LineStyle).second) << i;
    EXPECT_TRUE(symbols.emplace(chart.Markers(i).SymbolColor, chart.Markers(i).Symbol).second) << i;
  }
}

}  // namespace
}  // namespace tavlo
