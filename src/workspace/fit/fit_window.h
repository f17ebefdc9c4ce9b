// FitWindow: the panel of one fit set. It shows a FitPanel: options for model
// and method, the button, and the grid of fits.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include "project/session.h"
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

  /// The selected cells become the grid's, so that copy finds them.
  void mirror_selection() { model_.mirror_selection(grd_Fit_); }

 signals:
  void choices_changed();
  void hint_wanted(const QString& hint);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
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
  std::optional<CellBox> box_of(int grid_row) const;
  void tick(int grid_row, bool shown);
  void show_row(const QModelIndex& index);
  void lay_out();
  void place_model_options(bool with_labels);
  void fit_columns();

  Session& session_;
  UserCommands& commands_;
  int index_;
  bool stepping_ = false;  // an arrow key goes from one option to the next
  GridModel model_;
  QGroupBox* model_frame_ = nullptr;
  QCheckBox* chk_Big_ = nullptr;
  QButtonGroup opt_Model_;
  QButtonGroup opt_Method_;
  QCheckBox* chk_Censored_ = nullptr;
  QLabel* txt_Custom_ = nullptr;
  QPushButton* btn_Fit_ = nullptr;
  QTableView grd_Fit_;
};

}  // namespace tavlo
