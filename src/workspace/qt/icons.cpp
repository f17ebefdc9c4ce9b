#include "workspace/qt/icons.h"

#include <QMap>
#include <QPainter>
#include <QPainterPath>

namespace tavlo {

namespace {

// All icons are drawn on a square of 16 units.
constexpr double side = 16;
const QColor ink(0x45, 0x52, 0x63);
const QColor blue(0x1F, 0x5F, 0xA8);
const QColor red(0xC0, 0x3A, 0x2B);
const QColor paper(Qt::white);

QPen pen(const QColor& colour, double width = 1.2) {
  return QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void draw_program(QPainter& p) {
  p.setPen(Qt::NoPen);
  p.setBrush(blue);
  p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3, 3);
  p.setPen(pen(paper, 1.6));
  p.drawLine(QPointF(3, 13), QPointF(13, 3.5));
  p.setBrush(paper);
  p.setPen(Qt::NoPen);
  for (const QPointF& at : {QPointF(4.5, 10), QPointF(8, 9.3), QPointF(11, 4)})
    p.drawEllipse(at, 1.3, 1.3);
}

void draw_document(QPainter& p) {
  p.setPen(pen(ink));
  p.setBrush(paper);
  p.drawRect(QRectF(3, 1.5, 10, 13));
  for (const double y : {5.0, 8.0, 11.0}) p.drawLine(QPointF(5.2, y), QPointF(10.8, y));
}

void draw_sheet(QPainter& p) {
  p.setPen(pen(ink));
  p.setBrush(paper);
  p.drawRect(QRectF(1.5, 2.5, 13, 11));
  p.fillRect(QRectF(2, 3, 12, 2.6), blue.lighter(160));
  for (const double y : {5.8, 9.6}) p.drawLine(QPointF(1.5, y), QPointF(14.5, y));
  p.drawLine(QPointF(6, 2.5), QPointF(6, 13.5));
}

void draw_panel(QPainter& p) {
  p.setPen(pen(ink));
  p.setBrush(paper);
  p.drawRoundedRect(QRectF(2.5, 1.5, 11, 13), 1.5, 1.5);
  p.fillRect(QRectF(4.6, 3.6, 6.8, 2.6), blue.lighter(160));
  p.setPen(Qt::NoPen);
  p.setBrush(ink);
  for (const double y : {8.8, 11.8})
    for (const double x : {5.4, 8.0, 10.6}) p.drawEllipse(QPointF(x, y), 0.9, 0.9);
}

void draw_graph(QPainter& p) {
  p.setPen(pen(ink));
  p.drawPolyline(QPolygonF({QPointF(2, 1.5), QPointF(2, 14), QPointF(14.5, 14)}));
  p.setPen(pen(red, 1.5));
  p.drawLine(QPointF(3.5, 12), QPointF(13.5, 3));
  p.setPen(Qt::NoPen);
  p.setBrush(blue);
  for (const QPointF& at : {QPointF(5, 9.3), QPointF(8.4, 9), QPointF(11.6, 3.6)})
    p.drawEllipse(at, 1.3, 1.3);
}

void draw_bin(QPainter& p) {
  p.setPen(pen(ink));
  p.setBrush(paper);
  p.drawPolygon(
      QPolygonF({QPointF(3.5, 4.5), QPointF(12.5, 4.5), QPointF(11.5, 14.5), QPointF(4.5, 14.5)}));
  p.drawLine(QPointF(2.5, 4.5), QPointF(13.5, 4.5));
  p.drawLine(QPointF(6.5, 2.3), QPointF(9.5, 2.3));
  for (const double x : {6.5, 9.5}) p.drawLine(QPointF(x, 7), QPointF(x, 12.3));
}

void draw_nothing(QPainter& p) {
  p.setPen(pen(ink.lighter(170)));
  p.drawEllipse(QPointF(8, 8), 4.5, 4.5);
  p.drawLine(QPointF(4.9, 11.1), QPointF(11.1, 4.9));
}

QIcon drawn_icon(const QString& key) {
  static const QMap<QString, void (*)(QPainter&)> drawings = {
      {QStringLiteral("tavlo"), draw_program}, {QStringLiteral("doc"), draw_document},
      {QStringLiteral("editor"), draw_sheet},  {QStringLiteral("pc"), draw_panel},
      {QStringLiteral("graph"), draw_graph},   {QStringLiteral("recycle"), draw_bin},
      {QStringLiteral("trash"), draw_nothing}};
  QIcon result;
  const auto draw = drawings.value(key, nullptr);
  if (!draw) return result;
  for (const int pixels : {16, 32, 48, 64}) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / side, pixels / side);
    draw(painter);
    painter.end();
    result.addPixmap(picture);
  }
  return result;
}

}  // namespace

QIcon icon(const QString& key) {
  // Hundreds of windows and nodes share a few. Kept to the end: a picture must not go after
  // the application.
  static auto& drawn = *new QMap<QString, QIcon>;
  auto found = drawn.find(key);
  if (found == drawn.end()) found = drawn.insert(key, drawn_icon(key));
  return *found;
}

}  // namespace tavlo
