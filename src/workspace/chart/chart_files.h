// ChartFiles: saves the chart of a window as a picture file, and remembers where the last
// one went, of which kind and how large it was: for the run and, beside the settings, for
// the next one.
#pragma once

#include <QWidget>
#include <string>

#include "workspace/chart/chart_stage.h"
#include "workspace/chart/picture_size.h"

namespace tavlo {

class ChartFiles {
 public:
  explicit ChartFiles(Session& session) : session_(session) {}

  /// Asks for a name and a size, and saves the chart in the format of the name's extension:
  /// PNG, SVG, PDF, or a metafile, which is drawn anew and has its own size. Says what was
  /// saved; what doesn't work is told. A drawing without a size does nothing.
  void save(ChartStage& stage, QWidget* parent);

 private:
  void remember();
  void recall();
  std::string suggestion(int chart_index) const;
  void save_picture(ChartStage& stage, const QString& name, QWidget* parent);
  void say_saved(const QString& name, const QString& size) const;

  Session& session_;
  bool has_recalled_ = false;
  QString folder_;
  QString type_ = QStringLiteral("wmf");
  SizeOnPaper size_;
};

}  // namespace tavlo
