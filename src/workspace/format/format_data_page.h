// Page of the format dialog for the plot sets: which data and fit each shows, its
// symbol and its line.
#pragma once

#include "workspace/format/format_page.h"

namespace tavlo {

class DataPage : public FormatPage {
  Q_OBJECT

 public:
  explicit DataPage(FormatDraft& draft);

  void show_chart() override;
  void composed() override { show_sets(); }

 private:
  At<ChartMarker> marker();
  void add_set_list();
  void add_contents();
  void add_symbol();
  void add_line();
  void show_sets();

  int row_ = 1;
  QComboBox* sets_ = nullptr;
  ChoiceEditor* fits_ = nullptr;
};

}  // namespace tavlo
