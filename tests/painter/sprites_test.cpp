// A shape that is copied looks as if it had been painted.
#include "painter/sprites.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "painter/picture_writer.h"

namespace tavlo {

namespace {

using namespace drawing;

constexpr int fresh = 50;  // shapes in a row that are all painted

/// Circles and triangles that keep clear of one another. With `always_painted` the
/// pen is selected again before any shape has come often.
DrawingRecord scattered(bool always_painted) {
  std::mt19937_64 generator(3);
  std::uniform_int_distribution<std::int32_t> jitter(0, 120);
  DrawingRecord drawing{10000, 6000, {}, {}};
  auto& records = drawing.records;
  records = {CreatePen{1, 0, 15, 128}, CreateBrush{2, 0xFFCC00}, SelectObject{1}, SelectObject{2}};
  for (int i = 0; i < 600; ++i) {
    const std::int32_t x = 300 + i % 30 * 310 + jitter(generator);
    const std::int32_t y = 200 + i / 30 * 280 + jitter(generator);
    if (i % 2 == 0)
      records.push_back(Ellipse{x - 70, y - 70, x + 71, y + 71});
    else
      records.push_back(Polygon{{{x, y - 80}, {x + 75, y + 50}, {x - 75, y + 50}}});
    if (always_painted && i % fresh == 0) records.push_back(SelectObject{1});
  }
  return drawing;
}

QImage picture_of(const DrawingRecord& drawing, const PictureFormat& format) {
  QImage image;
  image.loadFromData(png_picture(drawing, format), "PNG");
  return image;
}

// A shape stands at most an eighth of a pixel off: no pixel changes by much.
TEST(Sprites, LookAsIfPaintedAtAnySize) {
  for (const PictureFormat& format :
       {PictureFormat{1000, 600, 1.0, 96}, PictureFormat{1777, 1003, 1.0, 96},
        PictureFormat{900, 540, 2.0, 96}, PictureFormat{801, 480, 1.5, 96}}) {
    const QImage copied = picture_of(scattered(false), format);
    const QImage painted = picture_of(scattered(true), format);
    ASSERT_EQ(copied.size(), painted.size());
    int largest = 0, different = 0;
    for (int y = 0; y < copied.height(); ++y)
      for (int x = 0; x < copied.width(); ++x) {
        const int difference = std::abs(qGray(copied.pixel(x, y)) - qGray(painted.pixel(x, y)));
        largest = std::max(largest, difference);
        different += difference > 0 ? 1 : 0;
      }
    EXPECT_LT(largest, 72) << format.width;
    EXPECT_GT(different, 0) << "nothing was copied";
  }
}

}  // namespace

}  // namespace tavlo
