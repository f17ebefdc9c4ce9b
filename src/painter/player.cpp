#include "painter/player.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

#include "painter/drawable_text.h"
#include "painter/pixel_grid.h"
#include "painter/sprites.h"

namespace tavlo {

namespace {

using drawing::Handle;

QColor colour_of(std::int32_t word) {
  return {word & 0xFF, (word >> 8) & 0xFF, (word >> 16) & 0xFF};
}

Qt::PenStyle pen_style_of(std::int32_t style) {
  switch (style) {
    case 1: return Qt::DashLine;
    case 2: return Qt::DotLine;
    case 3: return Qt::DashDotLine;
    case 4: return Qt::DashDotDotLine;
    default: return Qt::SolidLine;
  }
}

/// A font and the direction that its text runs in.
struct Lettering {
  QFont font;
  double degrees = 0;  ///< counter-clockwise
  double lead = 0;     ///< keeps the middle of a line of smaller letters at its place
};

/// A tick of an axis is too short to show the dashes of its pen: it would be a few
/// stray dots, so it is drawn solid.
bool is_short(const drawing::Polyline& line) {
  constexpr int shortest_dashed = 200;  // logical units
  const drawing::Place& a = line.places.front();
  const drawing::Place& b = line.places.back();
  const auto length =
      std::max(std::abs(std::int64_t{a.x} - b.x), std::abs(std::int64_t{a.y} - b.y));
  return length <= shortest_dashed;
}

/// Visits the records one by one with the state that they set.
class Player {
 public:
  Player(QPainter& painter, const DrawingRecord& drawing, const QRectF& target)
      : painter_(painter),
        grid_(painter),
        origin_(target.topLeft()),
        sx_(target.width() / drawing.width),
        sy_(target.height() / drawing.height),
        even_(std::min(sx_, sy_)) {}

  void operator()(const drawing::TransparentBackground&) {}
  void operator()(const drawing::CreatePen& pen) { pens_[pen.handle] = pen_of(pen); }
  void operator()(const drawing::CreateBrush& brush) {
    brushes_[brush.handle] = QBrush(colour_of(brush.colour));
  }
  void operator()(const drawing::CreateFont& font) { fonts_[font.handle] = lettering_of(font); }
  void operator()(const drawing::SelectObject& object) { select(object.handle); }
  void operator()(const drawing::DeleteObject& object) {
    pens_.erase(object.handle);
    brushes_.erase(object.handle);
    fonts_.erase(object.handle);
  }
  void operator()(const drawing::SetTextAlign& align) { align_ = align.align; }
  void operator()(const drawing::SetTextColour& colour) { text_colour_ = colour_of(colour.colour); }
  void operator()(const drawing::Rectangle& box);
  void operator()(const drawing::Ellipse& box) {
    const QRectF area(at({box.left, box.top}), at({box.right, box.bottom}));
    paint_shape({{box.left, box.top}, {box.right, box.bottom}}, area,
                [&](QPainter& painter) { painter.drawEllipse(area); });
  }
  void operator()(const drawing::Polyline& line);
  void operator()(const drawing::Polygon& shape) {
    constexpr std::size_t fewest_corners = 3;
    if (shape.places.size() < fewest_corners) return;
    const QPolygonF polygon = polygon_of(shape.places);
    paint_shape(shape.places, polygon.boundingRect(),
                [&](QPainter& painter) { painter.drawPolygon(polygon); });
  }
  void operator()(const drawing::Symbol& symbol) { symbol_ = symbol; }
  void operator()(const drawing::Text& text);

  /// To be called after each record: a symbol is over with its last part.
  void count_part(const drawing::Record& record) {
    if (symbol_.parts > 0 && !std::holds_alternative<drawing::Symbol>(record)) --symbol_.parts;
  }

 private:
  QPointF at(drawing::Place place) const;
  QPolygonF polygon_of(const std::vector<drawing::Place>& places) const;
  QPen pen_of(const drawing::CreatePen& from) const;
  Lettering lettering_of(const drawing::CreateFont& from) const;
  void select(Handle handle);
  void paint_shape(const std::vector<drawing::Place>& places, const QRectF& area,
                   const Sprites::Paint& paint);
  void paint_with(const QPen& pen) {
    painter_.setPen(pen);
    painter_.setBrush(brush_);
  }
  QPen whole_pen() const;
  double start_of(double width) const;

  QPainter& painter_;
  PixelGrid grid_;
  Sprites sprites_;
  QPointF origin_;
  double sx_;
  double sy_;
  double even_;               ///< scale of what keeps its form: symbols, letters, lines
  drawing::Symbol symbol_{};  ///< at work, with the parts that are still to come
  std::unordered_map<Handle, QPen> pens_;
  std::unordered_map<Handle, QBrush> brushes_;
  std::unordered_map<Handle, Lettering> fonts_;
  QPen pen_{Qt::NoPen};
  QBrush brush_{Qt::NoBrush};
  Lettering lettering_;
  drawing::TextAlign align_ = drawing::TextAlign::left;
  QColor text_colour_ = Qt::black;
};

QPointF Player::at(drawing::Place place) const {
  if (symbol_.parts <= 0) return origin_ + QPointF(place.x * sx_, place.y * sy_);
  const auto [x, y] = symbol_.centre;
  return origin_ + QPointF(x * sx_ + (static_cast<double>(place.x) - x) * even_,
                           y * sy_ + (static_cast<double>(place.y) - y) * even_);
}

QPolygonF Player::polygon_of(const std::vector<drawing::Place>& places) const {
  QPolygonF polygon;
  polygon.reserve(static_cast<int>(places.size()));
  for (const drawing::Place& place : places) polygon << at(place);
  return polygon;
}

/// A line thinner than a pixel is painted one pixel wide and paler, as ink of
/// that width would look; on paper half of 1/96 inch is the least.
QPen Player::pen_of(const drawing::CreatePen& from) const {
  constexpr double least_alpha = 0.45;
  constexpr double full_ink = 0.8;  // of a pixel
  const double width = from.width * even_;
  const double least =
      grid_.exists() ? grid_.pixel() : 0.5 / 96.0 * painter_.device()->logicalDpiX();
  QColor colour = colour_of(from.colour);
  if (grid_.exists() && width < full_ink * least)
    colour.setAlphaF(static_cast<float>(std::max(least_alpha, width / (full_ink * least))));
  return {colour, std::max(width, least), pen_style_of(from.style), Qt::RoundCap, Qt::RoundJoin};
}

Lettering Player::lettering_of(const drawing::CreateFont& from) const {
  Lettering lettering;
  QFont& font = lettering.font;
  font.setFamilies({drawable_face(from.face), "Arial", "Liberation Sans", "Arimo", "Helvetica"});
  font.setStyleHint(QFont::SansSerif);
  font.setHintingPreference(QFont::PreferNoHinting);
  const double em = std::abs(static_cast<double>(from.height));
  const double pixels = std::max(1.0, em * even_);
  font.setPointSizeF(pixels * 72.0 / painter_.device()->logicalDpiY());
  font.setWeight(from.weight >= 600 ? QFont::Bold : QFont::Normal);
  font.setItalic(from.italic);
  font.setUnderline(from.underline);
  lettering.degrees = from.escapement / 10.0;
  const bool upright = std::abs(from.escapement) == 900;
  constexpr double line = 1.117;  // height of a line of letters, in ems
  lettering.lead = ((upright ? sx_ : sy_) - even_) * em * line / 2.0;
  return lettering;
}

void Player::select(Handle handle) {
  sprites_.forget();
  if (handle == drawing::null_pen) pen_ = QPen(Qt::NoPen);
  if (handle == drawing::hollow_brush) brush_ = QBrush(Qt::NoBrush);
  if (handle == drawing::system_font) lettering_ = {};
  if (const auto pen = pens_.find(handle); pen != pens_.end()) pen_ = pen->second;
  if (const auto brush = brushes_.find(handle); brush != brushes_.end()) brush_ = brush->second;
  if (const auto font = fonts_.find(handle); font != fonts_.end()) lettering_ = font->second;
}

/// The pen for upright and level lines: whole pixels, square ends.
QPen Player::whole_pen() const {
  QPen pen = pen_;
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::MiterJoin);
  if (grid_.exists()) pen.setWidthF(grid_.whole_width(pen.widthF()));
  return pen;
}

/// `area` is the shape without its pen.
void Player::paint_shape(const std::vector<drawing::Place>& places, const QRectF& area,
                         const Sprites::Paint& paint) {
  const QPointF first = at(places.front());
  const double margin = pen_.widthF();
  const auto at_origin = [&](QPainter& painter) {
    painter.setPen(pen_);
    painter.setBrush(brush_);
    painter.translate(-first);
    paint(painter);
  };
  if (grid_.exists() &&
      sprites_.draw(painter_, places, first,
                    area.translated(-first).adjusted(-margin, -margin, margin, margin), at_origin))
    return;
  paint_with(pen_);
  paint(painter_);
}

void Player::operator()(const drawing::Rectangle& box) {
  QRectF frame(at({box.left, box.top}), at({box.right, box.bottom}));
  const QPen pen = whole_pen();
  if (grid_.exists()) frame = grid_.aligned(frame, pen_.style() == Qt::NoPen ? 0.0 : pen.widthF());
  paint_with(pen);
  painter_.drawRect(frame);
}

void Player::operator()(const drawing::Polyline& line) {
  const auto& places = line.places;
  const bool is_straight =
      places.size() == 2 && (places[0].x == places[1].x || places[0].y == places[1].y);
  if (!is_straight) {
    painter_.setPen(pen_);
    painter_.drawPolyline(polygon_of(places));
    return;
  }
  QPen pen = whole_pen();
  if (is_short(line)) pen.setStyle(Qt::SolidLine);
  const QLineF straight(at(places[0]), at(places[1]));
  painter_.setPen(pen);
  painter_.drawLine(grid_.exists() ? grid_.aligned(straight, pen.widthF()) : straight);
}

/// Where a text of that width begins, from its reference point.
double Player::start_of(double width) const {
  switch (align_) {
    case drawing::TextAlign::right: return -width;
    case drawing::TextAlign::centre: return -width / 2.0;
    default: return 0.0;
  }
}

void Player::operator()(const drawing::Text& text) {
  const QString words = drawable_text(text.utf8);
  const QFontMetricsF metrics(lettering_.font, painter_.device());
  const QPointF start(start_of(metrics.horizontalAdvance(words)),
                      lettering_.lead + metrics.ascent());
  painter_.setFont(lettering_.font);
  painter_.setPen(text_colour_);
  if (lettering_.degrees == 0.0) return painter_.drawText(at(text.place) + start, words);
  painter_.save();
  painter_.translate(at(text.place));
  painter_.rotate(-lettering_.degrees);
  painter_.drawText(start, words);
  painter_.restore();
}

}  // namespace

QRectF chart_area(const QRectF& room, const DrawingRecord& drawing) {
  constexpr double least_stretch = 0.85;
  constexpr double most_stretch = 1.3;
  if (drawing.width <= 0 || drawing.height <= 0) return {};
  const double shape = static_cast<double>(drawing.width) / drawing.height;
  const double width = std::min(room.width(), room.height() * shape * most_stretch);
  const double height = std::min(room.height(), width / (shape * least_stretch));
  return {room.x() + (room.width() - width) / 2, room.y() + (room.height() - height) / 2, width,
          height};
}

void PlayChart(QPainter& painter, const DrawingRecord& drawing, const QRectF& room) {
  const QRectF target = chart_area(room, drawing);
  if (target.isEmpty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::TextAntialiasing);
  Player player(painter, drawing, target);
  for (const drawing::Record& record : drawing.records) {
    std::visit(player, record);
    player.count_part(record);
  }
  painter.restore();
}

}  // namespace tavlo
