#include "chart/record/recorder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "numerics/rounding.h"
#include "project/code_page.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr std::int32_t widest_pen = 32767;
constexpr std::int32_t colour_mask = 0xFFFFFF;
constexpr std::size_t longest_face = 31;
constexpr std::size_t longest_text = 32767;

/// |width| without the one case that has no positive twin.
std::int32_t pen_width(std::int32_t width) {
  if (width < -widest_pen) return widest_pen;
  return std::min(std::abs(width), widest_pen);
}

bool is_dashed(std::int32_t style) { return style >= 1 && style <= 4; }

}  // namespace

double drawn_font_size(float size) {
  if (std::isnan(size)) return 1.0;
  return std::clamp(static_cast<double>(size), 1.0, 1638.0);
}

Handle Recorder::next_handle(Kind kind) {
  made_.push_back(kind);
  return static_cast<Handle>(made_.size());
}

Recorder::Kind Recorder::kind_of(Handle handle) const {
  if (handle == null_pen) return Kind::pen;
  if (handle == hollow_brush) return Kind::brush;
  if (handle == system_font) return Kind::font;
  return made_.at(static_cast<std::size_t>(handle) - 1);
}

Handle Recorder::fl_MakePen(std::int32_t style, std::int32_t width, std::int32_t colour,
                            bool& made) {
  made = false;
  if (width == 0 || style == pen_style::none) return null_pen;
  if (style < 0 || style > pen_style::inside_frame) return no_object;
  made = true;
  const Handle handle = next_handle(Kind::pen);
  const std::int32_t drawn_style = style == pen_style::inside_frame ? pen_style::solid : style;
  add(CreatePen{handle, drawn_style, is_dashed(style) ? 1 : pen_width(width),
                colour & colour_mask});
  return handle;
}

Handle Recorder::make_brush(std::int32_t colour) {
  const Handle handle = next_handle(Kind::brush);
  add(CreateBrush{handle, colour & colour_mask});
  return handle;
}

Handle Recorder::fl_MakeFont(const ChartItem& item, std::int32_t angle, bool& made) {
  const Handle handle = next_handle(Kind::font);
  const double em = drawn_font_size(item.FontSize) * units_per_point;
  add(CreateFont{handle, -ToInt32(em), angle, item.FontBold ? 600 : 400, item.FontItalic,
                 item.FontUnderline, std::string(utf8_front(item.FontName, longest_face))});
  made = true;
  return handle;
}

Handle Recorder::select(Handle handle) {
  if (handle == no_object) return no_object;
  const Kind kind = kind_of(handle);
  Handle& current = kind == Kind::pen ? pen_ : kind == Kind::brush ? brush_ : font_;
  add(SelectObject{handle});
  return std::exchange(current, handle);
}

void Recorder::remove(Handle handle) { add(DeleteObject{handle}); }

void Recorder::align(TextAlign align) { add(SetTextAlign{align}); }

void Recorder::text_colour(std::int32_t colour) { add(SetTextColour{colour & colour_mask}); }

void Recorder::text(Place place, const std::string& utf8) {
  if (!utf8.empty()) add(Text{place, std::string(utf8_front(utf8, longest_text))});
}

void Recorder::append(const DrawingRecord& drawing) {
  const auto before = static_cast<Handle>(made_.size());
  const auto renumber = [before](auto& record) {
    if constexpr (requires { record.handle; })
      if (record.handle > no_object) record.handle += before;
  };
  reserve(drawing.records.size());
  for (Record record : drawing.records) {
    if (std::holds_alternative<CreatePen>(record)) made_.push_back(Kind::pen);
    if (std::holds_alternative<CreateBrush>(record)) made_.push_back(Kind::brush);
    if (std::holds_alternative<CreateFont>(record)) made_.push_back(Kind::font);
    std::visit(renumber, record);
    add(std::move(record));
  }
}

Selected::Selected(Recorder& recorder, Handle handle, bool made)
    : recorder_(recorder), handle_(handle), earlier_(recorder.select(handle)), made_(made) {}

Selected::~Selected() {
  recorder_.select(earlier_);
  if (made_) recorder_.remove(handle_);
}

Selected Selected::pen(Recorder& recorder, std::int32_t style, std::int32_t width,
                       std::int32_t colour) {
  bool made = false;
  const Handle handle = recorder.fl_MakePen(style, width, colour, made);
  return {recorder, handle, made};
}

Selected Selected::brush(Recorder& recorder, bool fill, std::int32_t colour) {
  if (!fill) return {recorder, hollow_brush, false};
  return {recorder, recorder.make_brush(colour), true};
}

Selected Selected::font(Recorder& recorder, const ChartItem& item, std::int32_t angle) {
  bool made = false;
  const Handle handle = recorder.fl_MakeFont(item, angle, made);
  return {recorder, handle, made};
}

}  // namespace tavlo
