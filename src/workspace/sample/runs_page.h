// RunsPage: the page of frm_MC on which a test is planned: the fits that are made of the
// sample, how often it is drawn, and when its units are looked at.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <vector>

#include "actions/sample_form.h"

namespace tavlo {

class RunsPage : public QWidget {
  Q_OBJECT

 public:
  RunsPage();

  void read_into(SampleForm& form) const;

 private:
  QWidget* make_counts();
  QWidget* make_fits();
  FitRequest request() const;
  void add_fit();
  void delete_fit();
  void show_fits(int row);
  void follow_choice();

  QLineEdit* txt_Runs_ = nullptr;
  QLineEdit* txt_Group_ = nullptr;
  QListWidget* cbo_FitNum_ = nullptr;
  QComboBox* cbo_Model_ = nullptr;
  QComboBox* cbo_Method_ = nullptr;
  QCheckBox* chk_Censored_ = nullptr;
  QPushButton* cmd_Add_ = nullptr;
  QPushButton* cmd_Delete_ = nullptr;
  std::vector<FitRequest> fits_;  ///< as the list shows them
};

}  // namespace tavlo
