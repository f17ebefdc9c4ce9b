// Picture size: how large a chart is on paper when it is saved, and how finely a picture of
// pixels shows it there; the sizes that people ask for most have names.
#pragma once

#include <QSizeF>
#include <QString>
#include <vector>

#include "painter/picture_writer.h"

namespace tavlo {

inline constexpr double millimetres_per_inch = 25.4;

struct SizeOnPaper {
  double width = 254;  ///< millimetres
  double height = 152.4;
  int dots_per_inch = 300;

  friend bool operator==(const SizeOnPaper&, const SizeOnPaper&) = default;
};

struct NamedSize {
  QString name;
  double width = 0;  ///< millimetres
  double height = 0;
};

/// The sizes with a name, among them that of the chart on the screen, of so many pixels.
std::vector<NamedSize> named_sizes(const QSizeF& on_screen);

/// The picture in pixels.
PictureFormat format_of(const SizeOnPaper& size);

/// Why there can be no picture of the size; empty when there can.
QString size_refusal(const SizeOnPaper& size);

}  // namespace tavlo
