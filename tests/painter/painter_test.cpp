#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QXmlStreamReader>
#include <cstdio>
#include <fstream>

#include "chart/chart_world.h"
#include "chart/parts/symbols.h"
#include "painter/picture_door.h"
#include "painter/picture_writer.h"
#include "painter/player.h"

namespace tavlo {
namespace {

/// Fonts need an application; one for all tests of this program.
class ApplicationEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QGuiApplication>(count_, arguments_);
  }
  void TearDown() override { application_.reset(); }

 private:
  int count_ = 1;
  char name_[8] = "painter";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const environment =
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

DrawingRecord published_chart() {
  test::ChartWorld here;
  here.show_published();
  here.chart().Markers(1).LineWidth = 20;
  return here.draw();
}

QImage picture(const DrawingRecord& drawing, const PictureFormat& format) {
  QImage image;
  image.loadFromData(png_picture(drawing, format), "PNG");
  return image;
}

constexpr QRgb paper = 0xFFFFFFEA, ground = 0xFFEAFFFF;

const PictureFormat sizes[] = {{800, 480, 1}, {1000, 600, 1},  {1600, 960, 1}, {400, 300, 1},
                               {800, 480, 2}, {777, 501, 1.5}, {5000, 400, 1}};

TEST(Painter, BoxesStandAtTheirPlacesAtAnySize) {
  const DrawingRecord drawing = published_chart();
  for (const PictureFormat& size : sizes) {
    const QImage image = picture(drawing, size);
    const QRectF area = chart_area(image.rect(), drawing);
    const auto at = [&](double x, double y) {
      return image.pixel(static_cast<int>(area.x() + x / 10000 * area.width()),
                         static_cast<int>(area.y() + y / 6000 * area.height()));
    };
    const std::string what = std::to_string(size.width) + "x" + std::to_string(size.height);
    ASSERT_EQ(image.width(), qRound(size.width * size.scale)) << what;
    EXPECT_EQ(at(600, 5600), ground) << what;
    EXPECT_EQ(at(8700, 4600), paper) << what;
    EXPECT_EQ(at(9600, 3000), ground) << what;
  }
}

// A line that is a pixel wide covers one column, at every place between pixels.
TEST(Painter, HairlinesCoverOnePixelWhereverTheyFall) {
  for (int x = 500; x < 540; ++x)
    for (const drawing::Record& line : {drawing::Record(drawing::Polyline{{{x, 0}, {x, 1000}}}),
                                        drawing::Record(drawing::Rectangle{x, -99, 1999, 1099})}) {
      DrawingRecord drawing{1000, 1000, {}, {}};
      drawing.records = {drawing::CreatePen{1, 0, 1, 0}, drawing::SelectObject{1}, line};
      const QImage image = picture(drawing, {97, 97});
      int touched = 0;
      for (int column = 0; column < image.width(); ++column)
        touched += image.pixel(column, 48) != 0xFFFFFFFF;
      EXPECT_EQ(touched, 1) << x << " " << line.index();
    }
}

/// What is dark in a picture of the drawing.
QRect ink(const DrawingRecord& drawing, int width, int height) {
  const QImage image = picture(drawing, {width, height});
  QRect dark;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      if (qGray(image.pixel(x, y)) < 128) dark |= QRect(x, y, 1, 1);
  return dark;
}

// In a wide or a high room too, a letter and all 27 symbols.
TEST(Painter, SymbolsAndLettersKeepTheirForm) {
  for (int symbol = 0; symbol <= 27; ++symbol) {
    DrawingRecord drawing{1000, 1000, {}, {}};
    Recorder recorder(drawing);
    const auto pen = Selected::pen(recorder, pen_style::solid, 8, 0);
    const auto brush = Selected::brush(recorder, true, 0);
    if (symbol > 0)
      SymbolStamp(symbol, 300).draw(recorder, {600, 400});
    else
      drawing.records = {drawing::CreateFont{1, -400, 0, 400, false, false, "Arial"},
                         drawing::SelectObject{1}, drawing::SetTextAlign{drawing::TextAlign::left},
                         drawing::Text{{600, 400}, "H"}};
    const QRect square = ink(drawing, 200, 200);
    EXPECT_GT(square.width(), 10);
    EXPECT_NEAR(ink(drawing, 400, 400).width(), 2 * square.width(), 3) << symbol;
    for (const auto& [width, height] : {std::pair{260, 200}, {200, 230}, {900, 200}, {200, 900}}) {
      const QRect seen = ink(drawing, width, height);
      const QRectF area = chart_area(QRectF(0, 0, width, height), drawing);
      EXPECT_NEAR(seen.width(), square.width(), 2) << symbol << " " << width;
      EXPECT_NEAR(seen.height(), square.height(), 2) << symbol << " " << width;
      const QPointF centre = QPointF(square.center()) - QPointF(120, 80);
      const QPointF expected =
          area.topLeft() + QPointF(0.6 * area.width(), 0.4 * area.height()) + centre;
      // A letter keeps the middle of its line instead.
      EXPECT_TRUE(symbol == 0 || QLineF(seen.center(), expected).length() < 2)
          << symbol << " " << width;
    }
  }
}

/// The share of a chart's fit line that is seen in its own colour, where a sample of so
/// many failures lies along it.
double seen_share_of_line(int failures) {
  test::ChartWorld here;
  std::vector<test::Point> points;
  for (int i = 1; i <= failures; ++i) {
    const double rank = (i - 0.3) / (failures + 0.4);
    points.push_back({600 * std::sqrt(-std::log1p(-rank))});
  }
  here.show(test::ranked(points));
  here.show(test::fit_of(model_code::weibull2, {{1 / 600.0, 1, 2, 0, 1}}));
  const DrawingRecord drawing = here.draw();
  drawing::Polyline line;
  for (const drawing::Polyline& each : test::all<drawing::Polyline>(drawing))
    if (each.places.size() == 2 && each.places[0].x != each.places[1].x &&
        each.places[0].y != each.places[1].y)
      line = each;
  const QImage image = picture(drawing, {2000, 1200});
  const QRgb colour = 0xFF600000;
  int seen = 0;
  constexpr int probes = 500;
  for (int i = 1; i < probes; ++i) {
    const double x = line.places[0].x + (line.places[1].x - line.places[0].x) * i / double{probes};
    const double y = line.places[0].y + (line.places[1].y - line.places[0].y) * i / double{probes};
    seen += image.pixel(static_cast<int>(x / 5), static_cast<int>(y / 5)) == colour;
  }
  return seen / double{probes};
}

TEST(Painter, AnyNumberOfPointsLeavesTheLineToBeSeen) {
  for (const int failures : {300, 5000, 50000}) EXPECT_GT(seen_share_of_line(failures), 0.95);
}

TEST(Painter, SvgHoldsItsTextsAsText) {
  const DrawingRecord drawing = published_chart();
  const QString svg = QString::fromUtf8(svg_picture(drawing, {1000, 600}));
  for (const std::string& text : test::texts(drawing))
    EXPECT_TRUE(svg.contains(">" + QString::fromStdString(text) + "</text>")) << text;
  EXPECT_TRUE(svg.contains("font-family=\"Arial\""));
  EXPECT_TRUE(svg.contains("viewBox=\"0 0 1000 600\""));
}

// A file name may hold any byte, and stands in the chart's foot.
TEST(Painter, SvgIsXmlWhateverTheTextsHold) {
  std::string hostile;
  for (int byte = 1; byte < 256; ++byte) hostile += static_cast<char>(byte);
  hostile += "\xEF\xBF\xBE\xEF\xBF\xBF\xED\xA0\x80 <&>\"]]>";
  hostile += '\0';
  DrawingRecord drawing{1000, 1000, {}, {}};
  drawing.records = {drawing::CreateFont{1, -400, 0, 400, false, false, hostile},
                     drawing::SelectObject{1}, drawing::Text{{0, 0}, hostile + " end"}};
  QXmlStreamReader xml(svg_picture(drawing, {1000, 600}));
  QString words;
  while (!xml.atEnd())
    if (xml.readNext() == QXmlStreamReader::Characters) words += xml.text();
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_TRUE(words.contains("0123456789")) << words.toStdString();
  EXPECT_TRUE(words.contains("end"));
  EXPECT_TRUE(pdf_picture(drawing, {1000, 600}).startsWith("%PDF"));
}

std::string output_of(const std::string& command) {
  FILE* pipe = popen(command.c_str(), "r");
  std::string output;
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  pclose(pipe);
  return output;
}

TEST(Painter, PdfEmbedsItsFontsAndTellsItsTexts) {
  const DrawingRecord drawing = published_chart();
  const QByteArray pdf = pdf_picture(drawing, {1000, 600});
  ASSERT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_TRUE(pdf.contains("/FontFile2"));
  EXPECT_TRUE(pdf.contains("/MediaBox [0 0 750"));
  if (std::system("pdftotext -v >/dev/null 2>&1") != 0) GTEST_SKIP() << "no pdftotext here";
  const std::string path = ::testing::TempDir() + "tavlo_painter_test.pdf";
  std::ofstream(path, std::ios::binary).write(pdf.constData(), pdf.size());
  const std::string words = output_of("pdftotext " + path + " -");
  const std::string fonts = output_of("pdffonts " + path);
  std::remove(path.c_str());
  EXPECT_NE(fonts.find(" yes "), std::string::npos) << fonts;
  EXPECT_EQ(fonts.find("Type 3"), std::string::npos) << "letters as drawings:\n" << fonts;
  for (const char* text : {"Results", "Occurrence CDF%", "50%", "606.5", "400"})
    EXPECT_NE(words.find(text), std::string::npos) << text;
}

TEST(Painter, TheModuleWritesEachFormatAndSaysWhatItCannot) {
  void* module = dlopen(TAVLO_PICTURE_MODULE, RTLD_NOW);
  ASSERT_NE(module, nullptr) << dlerror();
  const auto write = reinterpret_cast<WritePicture>(dlsym(module, write_picture_symbol));
  ASSERT_NE(write, nullptr);
  const DrawingRecord drawing = published_chart();
  std::string bytes, error;
  const std::pair<const char*, const char*> formats[] = {
      {"png", "\x89PNG"}, {"svg", "<?xml"}, {"pdf", "%PDF"}};
  for (const auto& [format, start] : formats) {
    EXPECT_TRUE(write(drawing, format, {640, 400}, bytes, error)) << error;
    EXPECT_EQ(bytes.rfind(start, 0), 0u) << format;
  }
  EXPECT_FALSE(write(drawing, "gif", {640, 400}, bytes, error));
  EXPECT_FALSE(write({}, "png", {640, 400}, bytes, error));
  const std::pair<int, int> refused[] = {{-1, 96},         {0, 96},   {15, 96},  {16385, 96},
                                         {2147483647, 96}, {640, -1}, {640, 35}, {640, 2401}};
  for (const auto& [width, dots] : refused) {
    error.clear();
    EXPECT_FALSE(write(drawing, "png", {width, 400, dots}, bytes, error)) << width << " " << dots;
    EXPECT_FALSE(error.empty());
  }
}

TEST(Painter, DrawingsWithoutASizeAndBrokenOnesPaintNothing) {
  EXPECT_EQ(picture({}, {50, 50}).pixel(25, 25), 0xFFFFFFFF);
  DrawingRecord odd{100, 100, {}, {}};
  odd.records = {drawing::SelectObject{7}, drawing::DeleteObject{9}, drawing::Polyline{},
                 drawing::Polygon{}, drawing::Text{{5, 5}, "\xFF\xFE"}};
  EXPECT_EQ(picture(odd, {50, 50}).width(), 50);
}

}  // namespace
}  // namespace tavlo
