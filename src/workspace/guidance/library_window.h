// LibraryWindow (frm_lib): shows a library of typical life parameters, searches it, and lets the
// person add rows and say what its fields are. It writes nothing into the project.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <functional>

#include "actions/keep_library.h"
#include "workspace/guidance/column_editor.h"
#include "workspace/guidance/library_model.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class LibraryWindow : public QDialog {
  Q_OBJECT

 public:
  /// `set_at_work` tells the fit set whose last fit fills a new row.
  LibraryWindow(Session& session, UserCommands& commands, std::function<int()> set_at_work,
                QWidget* parent);

  /// Opens with the person's last library at the first time, or comes to the front.
  void open_window();

  /// Asks about a definition that is not saved; false when the person wants to stay.
  bool may_close() { return may_leave_library(session_, library_); }

  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* make_head();
  QWidget* make_data_tab();
  QWidget* make_data_buttons();
  void set_up_table();
  void show_library();
  void set_widths();
  void show_names();
  void show_notes();
  void search();
  void take(int place);
  void press_image(int number);
  void new_row();
  void copy_rows();
  void copy(const std::vector<std::vector<std::string>>& rows);
  void paint_corner(QWidget& corner);

  Session& session_;
  UserCommands& commands_;
  std::function<int()> set_at_work_;
  Library library_;
  bool is_opened_ = false;
  LibraryModel model_;
  QComboBox cbo_Lib_;
  QTabWidget tabs_;
  QLineEdit txt_Search_;
  QLabel lbl_Found_;
  QTableView grd_Lib_;
  ColumnEditor fields_;
  QLabel lbl_Notes_;
};

}  // namespace tavlo
