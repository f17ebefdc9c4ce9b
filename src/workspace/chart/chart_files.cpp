#include "workspace/chart/chart_files.h"

#include <QFileInfo>

#include "chart/compose/make_chart.h"
#include "chart/metafile/chart_exits.h"
#include "painter/picture_writer.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int print_quality = 300;  // pixels an inch

using Painter = QByteArray (*)(const DrawingRecord&, const PictureFormat&);

/// Null for a metafile.
Painter painter_of(const QString& extension) {
  if (extension == QStringLiteral("png")) return png_picture;
  if (extension == QStringLiteral("svg")) return svg_picture;
  if (extension == QStringLiteral("pdf")) return pdf_picture;
  return nullptr;
}

}  // namespace

void save_chart(Session& session, int chart_index, const DrawingRecord& drawing) {
  if (drawing.width <= 0 || drawing.height <= 0) return;
  const auto chosen = session.ports.prompts.choose_file(
      {"Enter Name to save",
       "All (*.*)|*.*|Metafile (*.wmf)|*.wmf|PNG picture (*.png)|*.png|"
       "SVG drawing (*.svg)|*.svg|PDF page (*.pdf)|*.pdf",
       2, true, true, "wmf"});
  const QString name = to_qt(chosen.value_or("")).trimmed();
  if (name.isEmpty()) return;
  if (const Painter paint = painter_of(QFileInfo(name).suffix().toLower()))
    save_picture_file(session.ports, from_qt(name),
                      paint(drawing, paper_format(drawing, print_quality)).toStdString());
  else
    SaveWMF(session, make_metafile_drawing(session, chart_index), from_qt(name));
}

}  // namespace tavlo
