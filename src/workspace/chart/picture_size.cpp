#include "workspace/chart/picture_size.h"

#include <QCoreApplication>

namespace tavlo {

namespace {

constexpr int least_side = 16;  // pixels
constexpr int most_side = 16384;
constexpr double most_pixels = 1.2e8;  // some 500 MB while it is painted

QString size_words(const char* text) { return QCoreApplication::translate("PictureSize", text); }

}  // namespace

std::vector<NamedSize> named_sizes(const QSizeF& on_screen) {
  constexpr double screen_pixel = millimetres_per_inch / 96;
  return {{size_words("Chart paper, 10 x 6 inch"), 254, 152.4},
          {size_words("As on the screen"), on_screen.width() * screen_pixel,
           on_screen.height() * screen_pixel},
          {size_words("A4 landscape"), 297, 210},
          {size_words("Slide 16:9"), 338.7, 190.5},
          {size_words("Single column, 85 mm"), 85, 51}};
}

PictureFormat format_of(const SizeOnPaper& size) {
  const auto pixels = [&size](double millimetres) {
    return qRound(millimetres / millimetres_per_inch * size.dots_per_inch);
  };
  return {pixels(size.width), pixels(size.height), 1.0, size.dots_per_inch};
}

QString size_refusal(const SizeOnPaper& size) {
  const PictureFormat format = format_of(size);
  if (std::min(format.width, format.height) < least_side)
    return size_words("The picture is too small.");
  const bool is_large = std::max(format.width, format.height) > most_side ||
                        static_cast<double>(format.width) * format.height > most_pixels;
  return is_large ? size_words("The picture is too large: choose fewer dots per inch.") : QString();
}

}  // namespace tavlo
