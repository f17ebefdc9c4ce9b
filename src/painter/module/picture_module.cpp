// The picture module: what the command line loads when a picture is asked for.
#include <QGuiApplication>
#include <QHashSeed>
#include <algorithm>
#include <new>

#include "painter/picture_door.h"
#include "painter/picture_writer.h"
#include "painter/report_pages.h"

namespace tavlo {
namespace {

constexpr int smallest = 16;
constexpr int largest = 16384;
constexpr int coarsest = 36;  // dots an inch
constexpr int finest = 2400;

/// Qt's remarks on the desktop around it (a missing runtime folder and the like)
/// say nothing to somebody who asked for a picture.
void keep_quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

/// Fonts need an application. It stays until the process ends: taking Qt apart
/// while static objects go is not safe from within a loaded module.
bool application_is_up(std::string& error) {
  static int count = 3;
  static char name[] = "tavlo", option[] = "-platform", value[] = "offscreen";
  static char* arguments[] = {name, option, value, nullptr};
  if (!QCoreApplication::instance()) {
    // Qt writes the fonts of a PDF in the order of a hash.
    QHashSeed::setDeterministicGlobalSeed();
    const auto earlier = qInstallMessageHandler(keep_quiet);
    new QGuiApplication(count, arguments);
    qInstallMessageHandler(earlier);
  }
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return true;
  error = "this program can't draw pictures";
  return false;
}

bool is_drawable(const DrawingRecord& drawing, const PictureSize& size, std::string& error) {
  if (std::min(size.width, size.height) < smallest || std::max(size.width, size.height) > largest) {
    error = "a picture is 16 to 16384 pixels wide and high";
    return false;
  }
  if (size.dots_per_inch < coarsest || size.dots_per_inch > finest) {
    error = "a picture has 36 to 2400 pixels an inch";
    return false;
  }
  if (drawing.width > 0 && drawing.height > 0) return true;
  error = "the chart is empty";
  return false;
}

QByteArray picture(const DrawingRecord& drawing, const std::string& format,
                   const PictureFormat& size) {
  if (format == "png") return png_picture(drawing, size);
  if (format == "svg") return svg_picture(drawing, size);
  if (format == "pdf") return pdf_picture(drawing, size);
  return {};
}

}  // namespace
}  // namespace tavlo

extern "C" Q_DECL_EXPORT bool tavlo_write_picture(const tavlo::DrawingRecord& drawing,
                                                  const char* format,
                                                  const tavlo::PictureSize& size,
                                                  std::string& bytes, std::string& error) {
  using namespace tavlo;
  try {
    if (!is_drawable(drawing, size, error) || !application_is_up(error)) return false;
    bytes =
        picture(drawing, format, {size.width, size.height, 1.0, size.dots_per_inch}).toStdString();
    if (bytes.empty()) error = std::string("the picture can't be made as ") + format;
    return !bytes.empty();
  } catch (const std::bad_alloc&) {
    error = "there is not enough memory for the picture";
    return false;
  }
}

extern "C" Q_DECL_EXPORT bool tavlo_write_report(const tavlo::Report& report, const char* format,
                                                 tavlo::PaperSize paper, std::string& bytes,
                                                 std::string& error) {
  using namespace tavlo;
  try {
    if (!application_is_up(error)) return false;
    bytes = report_file(report, format, paper);
    if (bytes.empty()) error = std::string("the report can't be made as ") + format;
    return !bytes.empty();
  } catch (const std::bad_alloc&) {
    error = "there is not enough memory for the report";
    return false;
  }
}
