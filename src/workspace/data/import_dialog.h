// ImportDialog: how a data file will be read, before it is: its first rows under what each
// column is, with the signs that were told from the content. All of it can be overridden;
// what comes of that is seen at once.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <functional>
#include <memory>

#include "actions/import_data.h"
#include "workspace/qt/qt_progress.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class ImportDialog : public QDialog {
  Q_OBJECT

 public:
  struct World {
    Session& session;
    UserCommands& commands;
    QtProgress& progress;
  };

  /// Shows the dialog over `parent`; it ends itself. `imported` gets the index of the data set
  /// that has come.
  static void run(const World& world, std::unique_ptr<ImportFile> file,
                  std::function<void(int)> imported, QWidget* parent);

  void accept() override;

  /// While the file is read: ends the reading, and the dialog stays.
  void reject() override;

 private:
  ImportDialog(const World& world, std::unique_ptr<ImportFile> file,
               std::function<void(int)> imported, QWidget* parent);

  QWidget* make_signs();
  void connect_signs();
  void set_up_table();
  void lay_out();
  void change(const std::function<void()>& choice);
  void look_again();
  void show_found();
  void show_columns();
  void show_rows();
  void show_row(int row, const TextLook::Row& from);
  QComboBox* make_column_list(std::size_t place);
  void show_end(const QString& words, bool is_good);
  void set_reading(bool reading);

  World world_;
  std::unique_ptr<ImportFile> file_;
  std::function<void(int)> imported_;
  ImportChoices choices_;
  ImportPreview preview_;
  QWidget fields_;
  QComboBox* cbo_Separator_ = nullptr;
  QComboBox* cbo_Decimal_ = nullptr;
  QComboBox* cbo_Head_ = nullptr;
  QLineEdit txt_Failed_;
  QTableWidget tbl_Rows_;
  QLabel lbl_Result_;
  QPushButton* cmd_Import_ = nullptr;
  bool reading_ = false;
};

}  // namespace tavlo
