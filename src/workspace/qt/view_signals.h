// ViewSignals: the core's news for the windows, as Qt signals. Windows connect
// to what they show; the core knows none of them.
#pragma once

#include <QObject>
#include <QString>

#include "ports/views.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

class ViewSignals : public QObject, public Views {
  Q_OBJECT

 public:
  void status(const std::string& text) override { emit status_text(to_qt(text)); }
  void busy_pointer(bool busy) override {
    busy_depth_ += busy ? 1 : -1;
    emit busy_changed(busy);
  }
  bool is_busy() const { return busy_depth_ > 0; }
  void fit_button_caption(int fit_index, const std::string& caption) override {
    emit button_caption(fit_index, to_qt(caption));
  }
  void records_changed() override { emit records(); }
  void sheet_changed(int data_index) override { emit sheet(data_index); }
  void fit_grid_changed(int fit_index) override { emit fit_grid(fit_index); }
  void chart_changed(int chart_index) override { emit chart(chart_index); }
  void chart_aged(int chart_index) override { emit age_of_chart(chart_index); }
  void log_changed() override { emit log(); }

 signals:
  void status_text(const QString& text);
  void busy_changed(bool busy);
  void button_caption(int fit_index, const QString& caption);
  void records();
  void sheet(int data_index);
  void fit_grid(int fit_index);
  void chart(int chart_index);
  void age_of_chart(int chart_index);
  void log();

 private:
  int busy_depth_ = 0;
};

}  // namespace tavlo
