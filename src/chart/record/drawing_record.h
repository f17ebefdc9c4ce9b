// Drawing record: a picture as a list of records, in the order of drawing and
// in the logical units of a chart box (Y grows downward). Composition appends to
// it; players read it: a window, a picture file, a metafile. It holds no size of
// any window, so a resize plays it again and composes nothing.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tavlo::drawing {

struct Place {
  std::int32_t x = 0;
  std::int32_t y = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

/// Names a pen, brush or font from its creation to its deletion. Numbers above
/// 0 are those of the record; the stock objects are always there.
using Handle = int;
inline constexpr Handle no_object = 0;
inline constexpr Handle hollow_brush = -1;
inline constexpr Handle null_pen = -2;
inline constexpr Handle system_font = -3;

/// Styles are those of the chart records: 0 solid, 1 dash, 2 dot, 3 dash-dot,
/// 4 dash-dot-dot, 6 solid. Colours have red in the low byte.
struct CreatePen {
  Handle handle = no_object;
  std::int32_t style = 0;
  std::int32_t width = 1;
  std::int32_t colour = 0;
  friend bool operator==(const CreatePen&, const CreatePen&) = default;
};

struct CreateBrush {
  Handle handle = no_object;
  std::int32_t colour = 0;
  friend bool operator==(const CreateBrush&, const CreateBrush&) = default;
};

struct CreateFont {
  Handle handle = no_object;
  std::int32_t height = 0;      ///< negative: minus the size of the em square
  std::int32_t escapement = 0;  ///< tenths of a degree, counter-clockwise
  std::int32_t weight = 400;
  bool italic = false;
  bool underline = false;
  std::string face;
  friend bool operator==(const CreateFont&, const CreateFont&) = default;
};

struct SelectObject {
  Handle handle = no_object;
  friend bool operator==(const SelectObject&, const SelectObject&) = default;
};

struct DeleteObject {
  Handle handle = no_object;
  friend bool operator==(const DeleteObject&, const DeleteObject&) = default;
};

/// Which point of a text stands at its place; y is the top of the line.
enum class TextAlign : std::int32_t { left = 0, right = 2, centre = 6 };

struct SetTextAlign {
  TextAlign align = TextAlign::left;
  friend bool operator==(const SetTextAlign&, const SetTextAlign&) = default;
};

struct SetTextColour {
  std::int32_t colour = 0;
  friend bool operator==(const SetTextColour&, const SetTextColour&) = default;
};

/// Text and gaps of dashed lines let what lies below shine through.
struct TransparentBackground {
  friend bool operator==(const TransparentBackground&, const TransparentBackground&) = default;
};

struct Rectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// Fills the box given by its edges.
struct Ellipse {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  friend bool operator==(const Ellipse&, const Ellipse&) = default;
};

struct Polyline {
  std::vector<Place> places;
  friend bool operator==(const Polyline&, const Polyline&) = default;
};

struct Polygon {
  std::vector<Place> places;
  friend bool operator==(const Polygon&, const Polygon&) = default;
};

/// The next `parts` records are one symbol around its centre. A drawing may be
/// stretched, a symbol keeps its form: a circle stays one.
struct Symbol {
  Place centre;
  std::int32_t parts = 0;
  friend bool operator==(const Symbol&, const Symbol&) = default;
};

struct Text {
  Place place;
  std::string utf8;
  friend bool operator==(const Text&, const Text&) = default;
};

using Record = std::variant<TransparentBackground, CreatePen, CreateBrush, CreateFont, SelectObject,
                            DeleteObject, SetTextAlign, SetTextColour, Rectangle, Ellipse, Polyline,
                            Polygon, Symbol, Text>;

}  // namespace tavlo::drawing

namespace tavlo {

/// Where a box that finds its own place came to stand, so that a window can tell
/// what lies under the pointer and let the user move it.
struct ItemArea {
  int item = 0;  ///< index in Chart::Boxes
  drawing::Rectangle area;
  friend bool operator==(const ItemArea&, const ItemArea&) = default;
};

struct DrawingRecord {
  std::int32_t width = 0;  ///< of the chart box; 0 when nothing could be drawn
  std::int32_t height = 0;
  std::vector<drawing::Record> records;
  std::vector<ItemArea> areas;  ///< no part of the picture

  friend bool operator==(const DrawingRecord&, const DrawingRecord&) = default;
};

}  // namespace tavlo
