// FitWindow: the panel of one fit set. It shows a FitPanel: options for model
// and method, the button, and the grid of fits.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QTimer>

#include "project/session.h"
#include "workspace/fit/life_panel.h"
#include "workspace/qt/grid_model.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

struct ModelOption;

class FitWindow : public QWidget {
  Q_OBJECT

 public:
  FitWindow(Session& session, UserCommands& commands, int fit_index, QWidget* parent = nullptr);

  /// Brings the options into step with the panel of the core.
  void show_choices();

  /// Shows the fits as they stand now.
  void refresh_grid();

  QTableView& grid() { return grd_Fit_; }

  /// The row of the fit grid that the keyboard is on; 0 for none.
  int current_row() const { return model_.grid_row(grd_Fit_.currentIndex()); }

  void set_button_caption(const QString& caption);

  LifePanel& life() { return life_; }
  const LifePanel& life() const { return life_; }

  /// Folds the Life panel away, or shows it again.
  void show_life(bool shown) { life_.setVisible(shown); }
  bool shows_life() const { return !life_.isHidden(); }

  /// Ticks the fit of the current row, or unticks it, as a click on its box does.
  void toggle_shown();

  /// The colour of its line on the chart, which the person chooses in a dialog.
  void choose_colour();

  /// What is to be known of the fit of the current row; empty where there is nothing.
  std::string notes() const;

  /// The selected cells become the grid's, so that copy finds them.
  void mirror_selection();

 signals:
  void choices_changed();
  void hint_wanted(const QString& hint);
  void wizard_wanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void choose(const std::function<void()>& choice);
  bool option_key(QObject& option, QEvent& event);
  QWidget* make_model_frame();
  void add_model_option(const ModelOption& option);
  QWidget* make_method_frame();
  QWidget* make_censored_box();
  QWidget* make_action_column();
  void set_up_grid();
  QWidget* make_waiting();
  void show_waiting(bool waits);
  void go_to_shown_fit();
  void show_life_of_current();
  std::optional<CellBox> box_of(int grid_row) const;
  QString sign_of(int grid_row) const;
  void tick(int grid_row, bool shown);
  void show_row(const QModelIndex& index);
  void lay_out();
  void show_what_fits();
  void place_model_options(bool with_labels);
  void fit_columns();

  Session& session_;
  UserCommands& commands_;
  int index_;
  int shown_ = 0;          // the slot that the chart follows
  bool stepping_ = false;  // an arrow key goes from one option to the next
  GridModel model_;
  QGroupBox* model_frame_ = nullptr;
  QCheckBox* chk_Big_ = nullptr;
  QButtonGroup opt_Model_;
  QButtonGroup opt_Method_;
  QCheckBox* chk_Censored_ = nullptr;
  QLabel* txt_Custom_ = nullptr;
  QPushButton* btn_Fit_ = nullptr;
  QPushButton* btn_Cancel_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QTimer patience_;
  QTableView grd_Fit_;
  LifePanel life_;
  QSplitter* below_choices_ = nullptr;
  QSplitter* beside_choices_ = nullptr;
  QLayout* choices_ = nullptr;
};

}  // namespace tavlo
