#include "workspace/chart/chart_files.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include "actions/work.h"
#include "chart/compose/make_chart.h"
#include "chart/metafile/chart_exits.h"
#include "workspace/chart/picture_dialog.h"
#include "workspace/qt/own_store.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr QLatin1String folder_key{"picture/folder"};
constexpr QLatin1String type_key{"picture/type"};
constexpr QLatin1String width_key{"picture/width"};
constexpr QLatin1String height_key{"picture/height"};
constexpr QLatin1String resolution_key{"picture/dots_per_inch"};

constexpr const char* picture_kinds =
    "Metafile (*.wmf)|*.wmf|PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg|"
    "PDF page (*.pdf)|*.pdf";

QStringList picture_types() {
  return {QStringLiteral("wmf"), QStringLiteral("png"), QStringLiteral("svg"),
          QStringLiteral("pdf")};
}

QString type_of(const QString& name) { return QFileInfo(name).suffix().toLower(); }

QByteArray painted(const QString& type, const DrawingRecord& drawing, const PictureFormat& format) {
  if (type == u"svg") return svg_picture(drawing, format);
  if (type == u"pdf") return pdf_picture(drawing, format);
  return png_picture(drawing, format);
}

/// What no file system minds in a name.
QString as_file_name(QString words) {
  static const QRegularExpression unwanted(QStringLiteral("[\\\\/:*?\"<>|\\x01-\\x1f]+"));
  return words.replace(unwanted, QStringLiteral(" ")).simplified();
}

}  // namespace

void ChartFiles::recall() {
  if (std::exchange(has_recalled_, true)) return;
  const auto store = own_store(session_.places);
  if (!store) return;
  folder_ = store->value(folder_key).toString();
  if (const QString type = store->value(type_key).toString(); picture_types().contains(type))
    type_ = type;
  SizeOnPaper last;
  last.width = store->value(width_key, last.width).toDouble();
  last.height = store->value(height_key, last.height).toDouble();
  last.dots_per_inch = store->value(resolution_key, last.dots_per_inch).toInt();
  if (size_refusal(last).isEmpty()) size_ = last;
}

void ChartFiles::remember() {
  const auto store = own_store(session_.places);
  if (!store) return;
  store->setValue(folder_key, folder_);
  store->setValue(type_key, type_);
  store->setValue(width_key, size_.width);
  store->setValue(height_key, size_.height);
  store->setValue(resolution_key, size_.dots_per_inch);
}

/// In the folder of the last one, else beside the project.
std::string ChartFiles::suggestion(int chart_index) const {
  const QFileInfo project(to_qt(present_work(session_).path));
  QString name = to_qt(project_title(session_));
  if (name.endsWith(QStringLiteral(".tavlo"), Qt::CaseInsensitive)) name.chop(6);
  if (session_.project.charts.bound() > 1) name += QStringLiteral(" Chart%1").arg(chart_index);
  const bool is_there = !folder_.isEmpty() && QDir(folder_).exists();
  const QString beside = project.filePath().isEmpty() ? QString() : project.absolutePath();
  return from_qt(
      QDir(is_there ? folder_ : beside).filePath(as_file_name(name) + QStringLiteral(".") + type_));
}

void ChartFiles::say_saved(const QString& name, const QString& size) const {
  const QFileInfo file(name);
  const QString bytes = QLocale().formattedDataSize(file.size(), 0, QLocale::DataSizeSIFormat);
  session_.ports.views.status(
      from_qt(QStringLiteral("Saved %1, %2%3").arg(file.fileName(), size, bytes)));
}

void ChartFiles::save_picture(ChartStage& stage, const QString& name, QWidget* parent) {
  const bool in_pixels = type_ == u"png";
  PictureDialog dialog(size_, stage.target().size(), in_pixels, parent);
  if (dialog.exec() != QDialog::Accepted) return;
  size_ = dialog.size();
  remember();
  const PictureFormat format = format_of(size_);
  const QByteArray bytes = painted(type_, stage.drawing(), format);
  if (bytes.isEmpty()) {
    session_.ports.prompts.show({"Unsuccessful file save",
                                 "There is not memory enough for a picture of this size.",
                                 BoxIcon::exclamation, BoxButtons::ok});
    return;
  }
  if (!save_picture_file(session_.ports, from_qt(name), bytes.toStdString())) return;
  say_saved(name, in_pixels
                      ? QStringLiteral("%1 x %2 pixels, ").arg(format.width).arg(format.height)
                      : QStringLiteral("%1 x %2 mm, ")
                            .arg(size_.width, 0, 'g', 4)
                            .arg(size_.height, 0, 'g', 4));
}

void ChartFiles::save(ChartStage& stage, QWidget* parent) {
  if (stage.drawing().width <= 0 || stage.drawing().height <= 0) return;
  recall();
  FileRequest request{"Enter Name to save",
                      picture_kinds,
                      static_cast<int>(picture_types().indexOf(type_)) + 1,
                      true,
                      true,
                      "wmf"};
  request.suggestion = suggestion(stage.index());
  const QString name = to_qt(session_.ports.prompts.choose_file(request).value_or("")).trimmed();
  if (name.isEmpty()) return;
  folder_ = QFileInfo(name).absolutePath();
  if (picture_types().contains(type_of(name))) type_ = type_of(name);
  remember();
  if (type_ != u"wmf") return save_picture(stage, name, parent);
  if (SaveWMF(session_, make_metafile_drawing(session_, stage.index()), from_qt(name)))
    say_saved(name, {});
}

}  // namespace tavlo
