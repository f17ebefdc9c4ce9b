// ColumnEditor: what the fields of a library are called, where their values come from and in
// which order they stand in the data file. It changes the definition at once and tells so; the
// header file is written when the person saves it.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QWidget>
#include <array>

#include "guidance/library.h"

namespace tavlo {

class ColumnEditor : public QWidget {
  Q_OBJECT

 public:
  explicit ColumnEditor(Library& library);

  /// Shows the library as it stands now.
  void show_library();

 signals:
  void changed();
  void rearranged();  ///< behind changed(), where fields came, went or moved
  void save_wanted();
  void image_pressed(int number);

 private:
  QWidget* make_list_side();
  QWidget* make_editor();
  QWidget* make_sources();
  QWidget* make_files();
  void connect_fields();
  LibraryColumn* column();
  void show_names();
  void show_column();
  void go_to(int row);
  void insert_field();
  void delete_field();
  void move_field(int order);
  void take_choices();
  void add_source();
  template <class Change>
  void change(Change change);

  Library& library_;
  bool is_showing_ = false;  ///< the fields are being filled, nobody types
  QListWidget lst_Fields_;
  QLineEdit txt_Name_;
  QComboBox cbo_Kind_;
  QSpinBox txt_Order_;
  QPlainTextEdit txt_FieldData_;
  QWidget* sources_ = nullptr;
  QComboBox cbo_Source_;
  std::array<QPushButton, 5> imgField_;
  QLabel lbl_RefFile_;
  QLabel lbl_DataFile_;
  std::array<QPushButton, 3> imgBtn_;
};

}  // namespace tavlo
