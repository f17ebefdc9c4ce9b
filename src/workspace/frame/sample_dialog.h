// SampleDialog (frm_MC): a sample is planned on its pages and drawn with its button. It stays
// open for the next one and keeps what was typed while the program runs.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "workspace/frame/program.h"
#include "workspace/sample/life_page.h"
#include "workspace/sample/runs_page.h"
#include "workspace/sample/suspensions_page.h"

namespace tavlo {

class SampleDialog : public QDialog {
  Q_OBJECT

 public:
  /// `drawn` is called when a sample has taken the place of the project.
  SampleDialog(Program& program, std::function<void()> drawn, QWidget* parent);

  /// Shows the dialog for samples by the method of a panel.
  void open_for(std::int16_t method);

  void accept() override;
  void reject() override;

 private:
  QWidget* make_buttons();
  void show_work(bool working);

  Program& program_;
  std::function<void()> drawn_;
  LifePage life_;
  SuspensionsPage suspensions_;
  RunsPage runs_;
  QLabel lbl_Status_;
  QPushButton* cmd_Sample_ = nullptr;
  QPushButton* cmd_Close_ = nullptr;
  std::int16_t method_ = 0;
  bool is_working_ = false;
};

}  // namespace tavlo
