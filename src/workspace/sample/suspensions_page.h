// SuspensionsPage: the page of frm_MC on which points of a sample are taken out before they
// fail.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QWidget>
#include <array>

#include "actions/sample_form.h"

namespace tavlo {

class SuspensionsPage : public QWidget {
  Q_OBJECT

 public:
  SuspensionsPage();

  void read_into(SampleForm& form) const;

 private:
  std::array<QLineEdit*, 4> txt_Susp_{};
  QCheckBox* chk_Susp_;
};

}  // namespace tavlo
