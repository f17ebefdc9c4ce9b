#include "chart/metafile/metafile_writer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "chart/metafile/metafile_records.h"
#include "chart/metafile/metafile_slots.h"
#include "chart/record/clipping.h"
#include "chart/record/spelled_letters.h"
#include "numerics/run_time_error.h"
#include "project/code_page.h"

namespace tavlo {

using namespace drawing;

namespace {

using Words = std::vector<MetafileWord>;

namespace function {
constexpr MetafileWord end = 0x0000;
constexpr MetafileWord set_background_mode = 0x0102;
constexpr MetafileWord set_map_mode = 0x0103;
constexpr MetafileWord select_object = 0x012D;
constexpr MetafileWord set_text_align = 0x012E;
constexpr MetafileWord delete_object = 0x01F0;
constexpr MetafileWord set_text_colour = 0x0209;
constexpr MetafileWord set_window_extent = 0x020C;
constexpr MetafileWord line_to = 0x0213;
constexpr MetafileWord move_to = 0x0214;
constexpr MetafileWord create_pen = 0x02FA;
constexpr MetafileWord create_font = 0x02FB;
constexpr MetafileWord create_brush = 0x02FC;
constexpr MetafileWord polygon = 0x0324;
constexpr MetafileWord polyline = 0x0325;
constexpr MetafileWord ellipse = 0x0418;
constexpr MetafileWord rectangle = 0x041B;
constexpr MetafileWord text_out = 0x0521;
}  // namespace function

constexpr std::int32_t largest_box = 32767;
constexpr std::size_t longest_count = 32767;
constexpr std::size_t face_room = 32;  // bytes, with a zero at the end
constexpr MetafileWord null_pen_style = 5;
constexpr MetafileWord solid_brush_style = 0;
constexpr MetafileWord hollow_brush_style = 1;

std::uint32_t colour_word(std::int32_t colour) {
  return static_cast<std::uint32_t>(colour) & 0xFFFFFFu;
}

/// The frame to clip with: far enough outside the chart box that no cut end of a
/// line shows, and room left for half a pen.
ClipFrame frame_of(const DrawingRecord& drawing) {
  constexpr std::int32_t reach = 30000;
  return {-reach, -reach, std::max(reach, drawing.width), std::max(reach, drawing.height)};
}

/// Every n-th corner, so many that they can be counted in 16 bits.
std::vector<Place> thinned(const std::vector<Place>& places) {
  const std::size_t step = (places.size() - 1) / longest_count + 1;
  std::vector<Place> kept;
  for (std::size_t i = 0; i < places.size(); i += step) kept.push_back(places[i]);
  return kept;
}

/// Visits the records one by one and writes each in the metafile's form.
class MetafileWriter {
 public:
  MetafileWriter(const DrawingRecord& drawing, std::string* lost)
      : frame_(frame_of(drawing)), lost_(lost) {
    records_.add(function::set_window_extent,
                 {signed_word(drawing.height), signed_word(drawing.width)});
    constexpr MetafileWord anisotropic = 8;
    records_.add(function::set_map_mode, {anisotropic});
    make_stock_objects();
  }

  void operator()(const TransparentBackground&) {
    constexpr MetafileWord transparent = 1;
    records_.add(function::set_background_mode, {transparent});
  }
  void operator()(const CreatePen& pen);
  void operator()(const CreateBrush& brush);
  void operator()(const CreateFont& font);
  void operator()(const SelectObject& object);
  void operator()(const DeleteObject& object);
  void operator()(const SetTextAlign& align) {
    records_.add(function::set_text_align, {signed_word(static_cast<std::int32_t>(align.align))});
  }
  void operator()(const SetTextColour& colour) {
    const std::uint32_t word = colour_word(colour.colour);
    records_.add(function::set_text_colour, {low_word(word), high_word(word)});
  }
  void operator()(const Rectangle& box);
  void operator()(const Ellipse& box);
  void operator()(const Polyline& line);
  void operator()(const Polygon& shape);
  void operator()(const Symbol&) {}  // its parts say all: a metafile isn't stretched here
  void operator()(const Text& text);

  /// Ends the metafile; its bytes with the header in front.
  std::string finish();

 private:
  enum Kind : std::size_t { pen, brush, font, kinds };

  void make_stock_objects();
  void create(Handle handle, Kind kind, MetafileWord function, const Words& words);
  void create_pen(Handle handle, MetafileWord style, std::int32_t width, std::int32_t colour);
  void create_brush(Handle handle, MetafileWord style, std::int32_t colour);
  void add_line(const std::vector<Place>& places);
  void add_places(MetafileWord function, std::vector<Place>::const_iterator first,
                  std::size_t count);

  ClipFrame frame_;
  std::string* lost_;
  MetafileRecords records_;
  MetafileSlots slots_;
  std::unordered_map<Handle, Kind> kind_of_;
  std::array<Handle, kinds> selected_{};
};

/// A metafile can't name the system's own objects. They are made like the others
/// and selected before the drawing begins, so that it starts with the same ones
/// in every reader.
void MetafileWriter::make_stock_objects() {
  constexpr std::int32_t ten_points = -140;
  create_pen(null_pen, null_pen_style, 0, 0);
  create_brush(hollow_brush, hollow_brush_style, 0);
  (*this)(CreateFont{system_font, ten_points, 0, 400, false, false, "System"});
  for (const Handle handle : {null_pen, hollow_brush, system_font}) (*this)(SelectObject{handle});
}

void MetafileWriter::create(Handle handle, Kind kind, MetafileWord function, const Words& words) {
  if (!slots_.take(handle)) return;
  kind_of_[handle] = kind;
  records_.add(function, words);
}

void MetafileWriter::create_pen(Handle handle, MetafileWord style, std::int32_t width,
                                std::int32_t colour) {
  const std::uint32_t word = colour_word(colour);
  create(handle, pen, function::create_pen,
         {style, signed_word(width), 0, low_word(word), high_word(word)});
}

void MetafileWriter::create_brush(Handle handle, MetafileWord style, std::int32_t colour) {
  const std::uint32_t word = colour_word(colour);
  constexpr MetafileWord no_hatch = 0;
  create(handle, brush, function::create_brush, {style, low_word(word), high_word(word), no_hatch});
}

void MetafileWriter::operator()(const CreatePen& from) {
  const bool known = from.style >= 0 && from.style <= null_pen_style;
  create_pen(from.handle, known ? signed_word(from.style) : 0, std::max(from.width, 0),
             from.colour);
}

void MetafileWriter::operator()(const CreateBrush& from) {
  create_brush(from.handle, solid_brush_style, from.colour);
}

void MetafileWriter::operator()(const CreateFont& from) {
  constexpr MetafileWord proof_quality = 2;  // beside pitch and family 0 in its word
  const MetafileWord slant = static_cast<MetafileWord>(from.italic | from.underline << 8);
  Words words = {signed_word(from.height),
                 0,
                 signed_word(from.escapement),
                 0,
                 signed_word(from.weight),
                 slant,
                 0,
                 0,
                 proof_quality};
  std::string face = ansi_from_utf8(from.face);
  face.resize(std::min(face.size(), face_room - 1));
  face.resize(face_room, '\0');
  push_text(words, face);
  create(from.handle, font, function::create_font, words);
}

void MetafileWriter::operator()(const SelectObject& object) {
  const auto slot = slots_.find(object.handle);
  if (!slot) return;
  selected_[kind_of_[object.handle]] = object.handle;
  records_.add(function::select_object, {*slot});
}

/// An object that is selected stays, as on the screen; a reader may crash if not.
void MetafileWriter::operator()(const DeleteObject& object) {
  const auto slot = slots_.find(object.handle);
  if (!slot || object.handle < no_object || selected_[kind_of_[object.handle]] == object.handle)
    return;
  records_.add(function::delete_object, {*slot});
  slots_.release(object.handle);
}

void MetafileWriter::operator()(const Rectangle& box) {
  if (std::max(box.left, box.right) < frame_.left || std::min(box.left, box.right) > frame_.right ||
      std::max(box.top, box.bottom) < frame_.top || std::min(box.top, box.bottom) > frame_.bottom)
    return;
  const auto x = [this](std::int32_t at) {
    return signed_word(std::clamp(at, frame_.left, frame_.right));
  };
  const auto y = [this](std::int32_t at) {
    return signed_word(std::clamp(at, frame_.top, frame_.bottom));
  };
  records_.add(function::rectangle, {y(box.bottom), x(box.right), y(box.top), x(box.left)});
}

/// A part of an ellipse has no record of its own; one that reaches out of the
/// frame is no symbol that anybody sees.
void MetafileWriter::operator()(const Ellipse& box) {
  if (!frame_.holds(Place{box.left, box.top}) || !frame_.holds(Place{box.right, box.bottom}))
    return;
  records_.add(function::ellipse, {signed_word(box.bottom), signed_word(box.right),
                                   signed_word(box.top), signed_word(box.left)});
}

void MetafileWriter::operator()(const Polyline& line) {
  if (frame_.holds(line.places)) return add_line(line.places);
  for (const std::vector<Place>& run : clipped_polyline(line.places, frame_)) add_line(run);
}

/// A straight line is a move and a line: some readers leave out a polyline of two
/// places. One of more places than a record can count goes on in the next record
/// from the place where the first ends.
void MetafileWriter::add_line(const std::vector<Place>& places) {
  if (places.size() == 2) {
    records_.add(function::move_to, {signed_word(places[0].y), signed_word(places[0].x)});
    records_.add(function::line_to, {signed_word(places[1].y), signed_word(places[1].x)});
    return;
  }
  for (std::size_t from = 0; from + 1 < places.size(); from += longest_count - 1)
    add_places(function::polyline, places.begin() + static_cast<std::ptrdiff_t>(from),
               std::min(longest_count, places.size() - from));
}

void MetafileWriter::operator()(const Polygon& shape) {
  std::vector<Place> corners =
      frame_.holds(shape.places) ? shape.places : clipped_polygon(shape.places, frame_);
  if (corners.size() < 2) return;
  corners = thinned(corners);
  add_places(function::polygon, corners.begin(), corners.size());
}

void MetafileWriter::add_places(MetafileWord function, std::vector<Place>::const_iterator first,
                                std::size_t count) {
  Words words = {static_cast<MetafileWord>(count)};
  words.reserve(1 + 2 * count);
  for (std::size_t i = 0; i < count; ++i, ++first) {
    words.push_back(signed_word(first->x));
    words.push_back(signed_word(first->y));
  }
  records_.add(function, words);
}

void MetafileWriter::operator()(const Text& text) {
  std::string bytes = ansi_from_utf8(with_letters_spelled(text.utf8), lost_);
  if (bytes.empty() || !frame_.holds(text.place)) return;
  bytes.resize(std::min(bytes.size(), longest_count));
  Words words = {static_cast<MetafileWord>(bytes.size())};
  push_text(words, bytes);
  words.push_back(signed_word(text.place.y));
  words.push_back(signed_word(text.place.x));
  records_.add(function::text_out, words);
}

std::string MetafileWriter::finish() {
  records_.add(function::end, {});
  constexpr MetafileWord in_memory = 1, header_words = 9, version = 0x0300;
  const auto size = static_cast<std::uint32_t>(header_words + records_.bytes().size() / 2);
  const std::uint32_t largest = records_.largest();
  const MetafileWord header[] = {in_memory,         header_words,       version,
                                 low_word(size),    high_word(size),    slots_.table_size(),
                                 low_word(largest), high_word(largest), 0};
  std::string bytes;
  bytes.reserve(2 * std::size_t{size});
  append_words(bytes, header);
  return bytes += records_.bytes();
}

/// The header by which a reader knows how large the picture is on paper. Its last
/// word is the exclusive or of those before it.
std::string placeable_header(const DrawingRecord& drawing) {
  Words words = {0xCDD7,
                 0x9AC6,
                 0,
                 0,
                 0,
                 signed_word(drawing.width),
                 signed_word(drawing.height),
                 metafile_units_per_inch,
                 0,
                 0};
  MetafileWord checksum = 0;
  for (const MetafileWord word : words) checksum = static_cast<MetafileWord>(checksum ^ word);
  words.push_back(checksum);
  std::string bytes;
  append_words(bytes, words);
  return bytes;
}

}  // namespace

std::string metafile_bytes(const DrawingRecord& drawing, std::string* lost) {
  if (drawing.width <= 0 || drawing.height <= 0) throw RunTimeError(run_time::invalid_argument);
  if (drawing.width > largest_box || drawing.height > largest_box)
    throw RunTimeError(run_time::overflow);
  MetafileWriter writer(drawing, lost);
  for (const Record& record : drawing.records) std::visit(writer, record);
  return placeable_header(drawing) + writer.finish();
}

}  // namespace tavlo
