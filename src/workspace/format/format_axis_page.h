// Page of the format dialog for one axis: limits, scale, labels and grid.
#pragma once

#include "workspace/format/format_page.h"

namespace tavlo {

class AxisPage : public FormatPage {
  Q_OBJECT

 public:
  /// 0 is X, 1 is Y.
  AxisPage(FormatDraft& draft, int axis);

  void show_chart() override;
  void composed() override;
  QWidget* invalid_field() override;

 private:
  ChartAxis& axis() { return at_(draft().chart()); }
  void add_limits();
  void add_limit(const QString& caption, const QString& name, double ChartAxis::*limit,
                 bool ChartAxis::*automatic);
  Field<double> limit_field(double ChartAxis::*limit) const;
  Field<bool> automatic_field(bool ChartAxis::*automatic) const;
  void add_labels();
  void add_grid();
  void enable_limits();
  QString named(const char* part) const;

  int index_;
  At<ChartAxis> at_;
  std::vector<NumberEditor*> limits_;  ///< lower, upper
};

}  // namespace tavlo
