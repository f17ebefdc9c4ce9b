// WizardWindow (frm_ModFit): walks the person through the flow chart to a model or a method, and
// shows what the data of each model look like. It gives advice; only its button "Set this model"
// changes anything: the options of the fit panel.
#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <array>
#include <functional>

#include "guidance/wizard.h"
#include "project/session.h"
#include "workspace/guidance/example_picture.h"

namespace tavlo {

class WizardWindow : public QDialog {
  Q_OBJECT

 public:
  /// Takes the model that was advised.
  using SetModel = std::function<void(const WizardAdvice&)>;

  WizardWindow(const Session& session, SetModel set_model, QWidget* parent);

  /// Opens at the first step, or comes to the front as it is.
  void open_wizard();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* make_flow_tab();
  QWidget* make_question();
  QWidget* make_buttons();
  QWidget* make_example_tab(std::size_t place);
  template <class Act>
  void walk(Act act);
  void show_step();
  void show_answers(const WizardStep& step);
  void show_advice(const WizardStep& step);

  const Session& session_;
  SetModel set_model_;
  Wizard wizard_;
  bool has_begun_ = false;
  QTabWidget SST_Models_;
  QGroupBox fraQuestion_;
  std::array<QRadioButton, 6> opt_Mod_;
  QLabel lbl_model_;
  QLabel lbl_Lacks_;
  ExamplePicture PicSmall_;
  std::array<QPushButton, 3> cmd_Flow_;
  QPushButton cmd_Set_;
};

}  // namespace tavlo
