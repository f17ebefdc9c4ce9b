// Page of the format dialog for whole looks: the factory's chart types and profile
// files.
#pragma once

#include "workspace/format/format_page.h"

namespace tavlo {

class ProfilePage : public FormatPage {
  Q_OBJECT

 public:
  explicit ProfilePage(FormatDraft& draft);
  void show_chart() override;

 signals:
  /// The person wants the profile saved, which needs all pages in order.
  void save_wanted();

 private:
  void add_types();
  void add_files();
  void take_type(const std::string& type);
  void cmd_Load();

  QComboBox* cbo_ChtType_ = nullptr;
};

}  // namespace tavlo
