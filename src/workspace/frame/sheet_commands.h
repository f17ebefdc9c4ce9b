// SheetCommands: what the commands that work on the rows of a data sheet do, on the sheet in
// front; its find bars and the columns that are shown, which are those of all sheets.
#pragma once

#include <QObject>
#include <QVariantList>
#include <array>
#include <functional>
#include <map>

#include "workspace/data/sheet_find.h"
#include "workspace/frame/program.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class SheetCommands : public QObject {
  Q_OBJECT

 public:
  SheetCommands(Program& program, ProjectWindows& windows);

  /// Gives a sheet that was made what all sheets share.
  void attach(int index);

  bool any() const { return windows_.active_block() == Block::sheet; }
  /// Whether the sheet in front holds any row.
  bool has_rows() const;

  void insert_rows();
  void delete_rows();
  void fill_down();
  void clear_cells();
  void sort(SortOrder order);
  void copy_with_headings();

  /// Leaves the selected rows out of the analysis; takes them in again when all are out.
  void toggle_left_out();
  /// Whether the selected rows are left out.
  bool is_left_out() const;

  void open_find();
  void find_again(SearchWay way);

  /// Asks for another title of the data set at work.
  void describe();

  void toggle_column(int column);
  bool shows(int column) const { return !hidden_[static_cast<std::size_t>(column)]; }
  /// Whether another column would still be shown without this one.
  bool may_hide(int column) const;

  /// The columns that are hidden, for the next run.
  QVariantList hidden_columns() const;
  void hide_columns(const QVariantList& columns);

  /// Keeps a menu of columns open while they are ticked.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int index() const { return windows_.current_index(); }
  DataSheet& sheet() const { return *program_.session.gDataForm(index()); }
  void change(const char* step, const std::function<void(DataSheet&, const GridBlock&)>& act);
  SheetFind& find_bar();
  void show_columns(SheetView& view) const;

  Program& program_;
  ProjectWindows& windows_;
  std::array<bool, sheet_column::count> hidden_{};
  std::map<SheetView*, SheetFind*> bars_;  ///< of the sheets that were searched
};

}  // namespace tavlo
