// Pages of the format dialog for the boxes of a chart: the chart and its plot, and
// the legend and parameter box, which find places of their own.
#pragma once

#include "workspace/format/format_page.h"

namespace tavlo {

class BoxesPage : public FormatPage {
  Q_OBJECT

 public:
  explicit BoxesPage(FormatDraft& draft);
};

class InsetsPage : public FormatPage {
  Q_OBJECT

 public:
  explicit InsetsPage(FormatDraft& draft);
  void show_chart() override;

 private:
  void add_inset(const QString& name, int item);
  void enable_places();
};

}  // namespace tavlo
