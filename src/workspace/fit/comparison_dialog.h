// ComparisonDialog (frm_Dist): the choice of data set, method and models of a comparison. What
// comes of it is the actions' affair and stands in the log.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QListWidget>
#include <QRadioButton>
#include <array>
#include <functional>
#include <vector>

#include "project/session.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class ComparisonDialog : public QDialog {
  Q_OBJECT

 public:
  /// Shows the dialog over `parent`, with the data set and the method of a panel chosen; it ends
  /// itself. `done` is called when the comparison stands in the log.
  static void run(Session& session, UserCommands& commands, int data_index,
                  std::function<void()> done, QWidget* parent);

  void accept() override;

 private:
  ComparisonDialog(Session& session, UserCommands& commands, std::function<void()> done,
                   QWidget* parent);

  QWidget* make_methods();
  QWidget* make_models();
  void lay_out();
  void choose(int data_index);
  void show_what_fits();
  int method() const;
  std::vector<std::int16_t> ticked() const;

  Session& session_;
  UserCommands& commands_;
  std::function<void()> done_;
  QListWidget lst_DataSet_;
  std::array<QRadioButton*, 3> opt_Meth_{};
  std::vector<QCheckBox*> chk_Model_;
};

}  // namespace tavlo
