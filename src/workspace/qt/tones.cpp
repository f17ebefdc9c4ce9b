#include "workspace/qt/tones.h"

#include <cmath>

namespace tavlo {

namespace {

QColor between(const QColor& from, const QColor& to, float share) {
  const auto part = [share](float a, float b) { return a + share * (b - a); };
  return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                          part(from.blueF(), to.blueF()));
}

/// Black on white or white on black: nothing between is wanted.
bool is_high_contrast(const QPalette& palette) {
  const int text = palette.color(QPalette::Text).lightness();
  const int base = palette.color(QPalette::Base).lightness();
  return std::abs(text - base) == 255;
}

}  // namespace

bool is_dark(const QPalette& palette) {
  return palette.color(QPalette::Text).lightness() > palette.color(QPalette::Base).lightness();
}

QColor wrong_ground(const QPalette& palette) {
  return is_dark(palette) ? QColor(0x6B, 0x1F, 0x1F) : QColor(0xFC, 0xDC, 0xDC);
}

QColor wrong_ink(const QPalette& palette) {
  return is_dark(palette) ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x1E, 0x1E);
}

QColor quiet_ink(const QPalette& palette) {
  return between(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.42F);
}

QColor soft_highlight(const QPalette& palette) {
  const QColor full = palette.color(QPalette::Highlight);
  if (is_high_contrast(palette)) return full;
  return between(palette.color(QPalette::Base), full, is_dark(palette) ? 0.45F : 0.22F);
}

}  // namespace tavlo
