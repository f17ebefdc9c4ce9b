// SheetView: the grid of a data sheet with its edit box. It turns keys and
// clicks into calls of the DataSheet and shows what came of them; the rules of
// the sheet are the DataSheet's.
#pragma once

#include <QLineEdit>
#include <QTableView>

#include "project/data_sheet.h"
#include "workspace/data/sheet_search.h"
#include "workspace/qt/grid_model.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class SheetView : public QTableView {
  Q_OBJECT

 public:
  SheetView(DataSheet& sheet, UserCommands& commands, QWidget* parent);

  /// Shows the sheet as it stands now, with the current cell of the grid.
  void refresh();

  /// Takes what stands in the cell that is being typed, if any.
  void leave_edit();

  /// Empties the selected cells.
  void clear_selected();

  /// Makes a row of the sheet, from 1, the current one and selects all of it, in view. An edit
  /// that is open is taken first. Nothing happens for a row that the sheet has not got.
  void select_row(int row);

  const DataSheet& sheet() const { return sheet_; }

  /// Goes to a cell of the sheet, in view.
  void go_to_cell(int row, int column);
  CellPlace current_cell() const;

  /// What is selected; the current cell when nothing is.
  GridBlock selected_block() const;
  /// Selects the cells of the block that the sheet has.
  void select_block(const GridBlock& block);

  /// Shows a column, or not; another one has the current cell then.
  void show_column(int column, bool is_shown);
  std::vector<int> shown_columns() const;

  /// The selection becomes the grid's, so that copy and paste find it.
  void mirror_selection() { model_.mirror_selection(*this); }

  QLineEdit& edit_box() { return edit_; }

 signals:
  /// The rows were changed by a step of that name.
  void edited(const QString& step);
  void hint_wanted(const QString& hint);
  /// The person has gone to another row of the sheet, from 1.
  void current_row_changed(int row);
  /// The person wants the menu of a heading, which is selected.
  void heading_menu_wanted(const QPoint& global);
  /// Several cells were pasted while one was being edited; the edit has ended.
  void rows_pasted();
  /// A text, or one file by its path, was dropped; the cell under it is the current one.
  void text_dropped(const QString& text);
  void file_dropped(const QString& path);

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers with) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void set_up_columns();
  void set_up_edit_box();
  void set_up_headings();
  std::string tip_of(int row, int column) const;
  int edge_of_data(int column, int row, int step) const;
  void skip_hidden(EditDirection direction);
  void tell_remark();
  void start_edit(const QString& text);
  void place_edit_box();
  void finish_edit(EditDirection direction);
  void cancel_edit();
  void close_edit_box();
  bool edit_key(QKeyEvent& key);
  void make_room_for_ranks();
  void show_current_cell();
  void show_hint(const QModelIndex& index);

  DataSheet& sheet_;
  UserCommands& commands_;
  GridModel model_;
  QLineEdit edit_;
};

}  // namespace tavlo
