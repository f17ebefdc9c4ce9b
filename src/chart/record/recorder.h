// Recorder: writes a drawing record. It hands out handles, remembers what is
// selected, and keeps every number within what a metafile can hold, so that the
// screen and a saved file show the same picture.
#pragma once

#include <string>
#include <vector>

#include "chart/record/drawing_record.h"
#include "project/chart_records.h"

namespace tavlo {

class Recorder {
 public:
  explicit Recorder(DrawingRecord& record) : record_(record) {}

  /// A pen of the record's style and |width|. Width 0 and style 5 give the null
  /// pen, with `made` false; dashed styles are 1 wide whatever the width says;
  /// an unknown style gives no_object. `made` says whether it is to be deleted.
  drawing::Handle fl_MakePen(std::int32_t style, std::int32_t width, std::int32_t colour,
                             bool& made);

  /// A solid brush.
  drawing::Handle make_brush(std::int32_t colour);

  /// The font of an item: 14 units a point (1 to 1638 points), `angle` in tenths
  /// of a degree, the face cut to 31 bytes.
  drawing::Handle fl_MakeFont(const ChartItem& item, std::int32_t angle, bool& made);

  /// Selects an object and returns the one of its kind that was selected.
  drawing::Handle select(drawing::Handle handle);
  void remove(drawing::Handle handle);

  void align(drawing::TextAlign align);
  void text_colour(std::int32_t colour);
  void text(drawing::Place place, const std::string& utf8);
  /// Notes where an item of the chart came to stand.
  void note_area(int item, const drawing::Rectangle& area) {
    record_.areas.push_back({item, area});
  }
  const std::vector<ItemArea>& areas() const { return record_.areas; }
  void add(drawing::Record record) { record_.records.push_back(std::move(record)); }
  /// Draws what another recorder wrote, with handles of its own.
  void append(const DrawingRecord& drawing);
  void reserve(std::size_t more) { record_.records.reserve(record_.records.size() + more); }

 private:
  enum class Kind { pen, brush, font };
  Kind kind_of(drawing::Handle handle) const;
  drawing::Handle next_handle(Kind kind);

  DrawingRecord& record_;
  std::vector<Kind> made_;  // kind of the handles 1, 2, ...
  drawing::Handle pen_ = drawing::null_pen;
  drawing::Handle brush_ = drawing::hollow_brush;
  drawing::Handle font_ = drawing::system_font;
};

/// An object that is selected for a scope: at its end the earlier one comes back
/// and, when it was made for the scope, the object is deleted.
class Selected {
 public:
  static Selected pen(Recorder& recorder, std::int32_t style, std::int32_t width,
                      std::int32_t colour);
  /// A solid brush of the colour, or the hollow one.
  static Selected brush(Recorder& recorder, bool fill, std::int32_t colour);
  static Selected font(Recorder& recorder, const ChartItem& item, std::int32_t angle = 0);

  ~Selected();
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  Selected(Recorder& recorder, drawing::Handle handle, bool made);

  Recorder& recorder_;
  drawing::Handle handle_;
  drawing::Handle earlier_ = drawing::no_object;
  bool made_;
};

/// Logical units of a text's em square for one point of font size.
inline constexpr double units_per_point = 14.0;

/// Font size in points as it is drawn: 1 to 1638.
double drawn_font_size(float size);

}  // namespace tavlo
