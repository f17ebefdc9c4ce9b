// The metafile in the eyes of a reader that nobody here wrote: libwmf's wmf2svg,
// its drawing made into pixels and held against our own PNG.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "chart/chart_world.h"
#include "chart/metafile/metafile_writer.h"
#include "painter/picture_writer.h"

namespace tavlo {
namespace {

constexpr int width = 2000;
constexpr int height = 1200;

/// Without a date: libwmf counts a right-aligned text from its right end onward
/// when it looks for the size of the picture.
DrawingRecord chart_with_everything() {
  test::ChartWorld here;
  here.show_published();
  here.chart().Markers(1).LineWidth = 20;
  here.chart().Boxes(chart_item::date).Text2.clear();
  return here.draw();
}

bool run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  return process.waitForFinished(60000) && process.exitCode() == 0;
}

QImage as_read_by_libwmf(const DrawingRecord& drawing) {
  const QTemporaryDir folder;
  const QString metafile = folder.filePath("a.wmf"), svg = folder.filePath("a.svg"),
                png = folder.filePath("a.png");
  QFile file(metafile);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray::fromStdString(metafile_bytes(drawing)));
  file.close();
  EXPECT_TRUE(run("wmf2svg", {"-o", svg, metafile}));
  EXPECT_TRUE(run("rsvg-convert", {"-b", "white", "-w", QString::number(width), "-h",
                                   QString::number(height), "-o", png, svg}));
  return QImage(png);
}

QImage as_painted(const DrawingRecord& drawing) {
  QImage image;
  image.loadFromData(png_picture(drawing, {width, height}), "PNG");
  return image;
}

bool is_darker(const QImage& image, int x, int y, int level) {
  return image.valid(x, y) && qGray(image.pixel(x, y)) < level;
}

/// A line that falls between two pixels is pale in both.
bool ink_nearby(const QImage& image, int x, int y) {
  constexpr int reach = 2, pale = 210;
  for (int dy = -reach; dy <= reach; ++dy)
    for (int dx = -reach; dx <= reach; ++dx)
      if (is_darker(image, x + dx, y + dy, pale)) return true;
  return false;
}

/// The share of the dark pixels of `a`, in the plot below the parameter box, near
/// which `b` has none.
double missing_in(const QImage& b, const QImage& a) {
  constexpr int dark = 128;
  int ink = 0, missing = 0;
  for (int y = 2300 * height / 6000; y < 5100 * height / 6000; ++y)
    for (int x = 1300 * width / 10000; x < 9200 * width / 10000; ++x) {
      if (!is_darker(a, x, y, dark)) continue;
      ++ink;
      missing += !ink_nearby(b, x, y);
    }
  return ink == 0 ? 1.0 : static_cast<double>(missing) / ink;
}

bool looks_alike(const QImage& painted, const QImage& read) {
  constexpr double most = 0.005;
  return missing_in(read, painted) < most && missing_in(painted, read) < most;
}

class MetafilePicture : public ::testing::Test {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable("wmf2svg").isEmpty() ||
        QStandardPaths::findExecutable("rsvg-convert").isEmpty())
      GTEST_SKIP() << "no wmf2svg or rsvg-convert here";
  }
};

// The comparison also notices that the fit's line is not there.
TEST_F(MetafilePicture, LooksLikeThePaintedOne) {
  DrawingRecord drawing = chart_with_everything();
  const QImage painted = as_painted(drawing);
  EXPECT_TRUE(looks_alike(painted, as_read_by_libwmf(drawing)));
  std::erase_if(drawing.records, [](const drawing::Record& record) {
    const auto* line = std::get_if<drawing::Polyline>(&record);
    return line && line->places.size() == 2 && line->places[0].x != line->places[1].x &&
           line->places[0].y != line->places[1].y;
  });
  EXPECT_FALSE(looks_alike(painted, as_read_by_libwmf(drawing)));
}

}  // namespace
}  // namespace tavlo
