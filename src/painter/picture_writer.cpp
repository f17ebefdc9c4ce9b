#include "painter/picture_writer.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cstdint>

#include "chart/metafile/metafile_writer.h"
#include "painter/player.h"

namespace tavlo {

namespace {

QRectF area_of(const PictureFormat& format) { return QRectF(0, 0, format.width, format.height); }

/// What `paint` writes to a device in memory.
template <class Paint>
QByteArray bytes_of(Paint paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  paint(buffer);
  buffer.close();
  return bytes;
}

}  // namespace

PictureFormat paper_format(const DrawingRecord& drawing, int dots_per_inch) {
  const auto pixels = [dots_per_inch](std::int32_t units) {
    const std::int64_t wanted = std::int64_t{units} * dots_per_inch / metafile_units_per_inch;
    return static_cast<int>(std::clamp<std::int64_t>(wanted, 16, 16384));
  };
  return {pixels(drawing.width), pixels(drawing.height), 1.0, dots_per_inch};
}

QByteArray png_picture(const DrawingRecord& drawing, const PictureFormat& format) {
  const QSize pixels(qRound(format.width * format.scale), qRound(format.height * format.scale));
  QImage image(pixels, QImage::Format_RGB32);
  if (image.isNull()) return {};
  image.setDevicePixelRatio(format.scale);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    PlayChart(painter, drawing, area_of(format));
  }
  constexpr double metres_per_inch = 0.0254;
  const int dots_per_metre = qRound(format.dots_per_inch * format.scale / metres_per_inch);
  image.setDotsPerMeterX(dots_per_metre);
  image.setDotsPerMeterY(dots_per_metre);
  return bytes_of([&](QBuffer& buffer) { image.save(&buffer, "PNG"); });
}

QByteArray svg_picture(const DrawingRecord& drawing, const PictureFormat& format) {
  return bytes_of([&](QBuffer& buffer) {
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setResolution(format.dots_per_inch);
    svg.setSize({format.width, format.height});
    svg.setViewBox(area_of(format));
    svg.setTitle("Tavlo chart");
    QPainter painter(&svg);
    PlayChart(painter, drawing, area_of(format));
  });
}

QByteArray pdf_picture(const DrawingRecord& drawing, const PictureFormat& format) {
  constexpr int fine = 1200;  // dots an inch: places and letters are not rounded visibly
  return bytes_of([&](QBuffer& buffer) {
    QPdfWriter pdf(&buffer);
    pdf.setResolution(fine);
    pdf.setPageMargins({0, 0, 0, 0});
    pdf.setPageSize(QPageSize(area_of(format).size() * 72.0 / format.dots_per_inch,
                              QPageSize::Point, "chart", QPageSize::ExactMatch));
    pdf.setTitle("Tavlo chart");
    pdf.setCreator("Tavlo");
    QPainter painter(&pdf);
    const double dots = static_cast<double>(fine) / format.dots_per_inch;
    PlayChart(painter, drawing, QRectF(0, 0, format.width * dots, format.height * dots));
  });
}

}  // namespace tavlo
