// The picture module: what the command line loads when a picture is asked for.
#include <QGuiApplication>
#include <new>

#include "painter/picture_door.h"
#include "painter/picture_writer.h"

namespace tavlo {
namespace {

constexpr int smallest = 16;
constexpr int largest = 16384;

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
    const auto earlier = qInstallMessageHandler(keep_quiet);
    new QGuiApplication(count, arguments);
    qInstallMessageHandler(earlier);
  }
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return true;
  error = "this program can't draw pictures";
  return false;
}

bool is_drawable(const DrawingRecord& drawing, int width, int height, std::string& error) {
  if (width < smallest || height < smallest || width > largest || height > largest) {
    error = "a picture is 16 to 16384 pixels wide and high";
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
                                                  const char* format, int width, int height,
                                                  std::string& bytes, std::string& error) {
  using namespace tavlo;
  try {
    if (!is_drawable(drawing, width, height, error) || !application_is_up(error)) return false;
    bytes = picture(drawing, format, {width, height}).toStdString();
    if (bytes.empty()) error = std::string("the picture can't be made as ") + format;
    return !bytes.empty();
  } catch (const std::bad_alloc&) {
    error = "there is not enough memory for the picture";
    return false;
  }
}
