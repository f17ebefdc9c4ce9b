// DataSheet: the sheet in which one data set is typed, without its window: the one door
// through which its rows are changed, its current cell and the cell that is being edited.
// The rows belong to the data set.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "project/cell_table.h"
#include "project/project.h"
#include "project/row_moves.h"
#include "project/settings.h"
#include "project/size_limits.h"

namespace tavlo {

/// Where the current cell goes when an edit ends.
enum class EditDirection { none, left, right, up, down };

/// What is wrong with what was typed into a cell of numbers, a sentence.
std::string words_of_unread(int column, const std::string& typed);

class DataSheet : public CellTable {
 public:
  /// Shows the data set of that identity, which the project has.
  DataSheet(Project& project, const Settings& settings, std::int32_t data_id);

  /// The sheet never shows fewer rows than this.
  static constexpr int least_rows = 30;

  std::int32_t data_id() const { return data_id_; }
  DataSet& data();
  const DataSet& data() const;

  int rows() const override;
  int columns() const override { return sheet_column::count; }
  std::string text(int row, int column) const override;

  /// The highest row that holds anything.
  int last_row() const { return static_cast<int>(data().rows.size()); }
  /// The last row that can be typed into. A data set that was read may have more than the
  /// usual number of rows, and then those that it has.
  int farthest_row() const { return std::max(most_data_rows, last_row()); }
  bool is_unreadable(int row, int column) const;
  bool is_left_out(int row) const;
  /// True for a cell that shows nothing, but for a rank.
  bool is_empty(int row, int column) const;
  /// True when each row of the block that holds anything is left out, and one does.
  bool is_left_out(const GridBlock& block) const;
  /// How many rows are left out of the analysis.
  int left_out_rows() const;

  /// What the person is to know of what was entered last, a sentence; mostly empty.
  const std::string& remark() const { return remark_; }

  bool editing() const { return editing_; }
  void set_edit_text(std::string text) { edit_text_ = std::move(text); }

  /// Opens the edit box on the current cell with `text`.
  void start_edit(std::string text);

  /// Ends the edit: commits it to its cell and closes the box. Does nothing
  /// when no edit is open.
  void end_edit();

  /// Closes the box and leaves the cell as it was.
  void cancel_edit();

  /// Enter or an arrow key in the edit box: commits and moves the current cell.
  void finish_edit(EditDirection direction);

  /// Enters the text of one cell; typing and pasting both come here. The X column reads the
  /// data notation, columns 1 to 4 take numbers; what can't be read stands as it was typed.
  /// A text that stands there already changes nothing.
  void enter(int row, int column, const std::string& typed);

  /// Lets a text that is no number stand in a cell of numbers, as one that can't be read.
  void hold_text(int row, int column, const std::string& text);

  /// Empties the cells of the block.
  void clear(const GridBlock& block);

  /// Leaves the rows of the block that hold anything out of the analysis, or takes them in again.
  void leave_out(const GridBlock& block, bool is_out);

  // Of blocks of rows. What was selected is so still, where it lies inside the sheet.

  /// Puts as many blank rows before the block as it has. False, and nothing, where the sheet
  /// would become longer than it can be.
  bool insert_rows(const GridBlock& block);
  void delete_rows(const GridBlock& block);
  /// Fills the columns of the block with what stands in its first row; a block of one row, with
  /// what stands above it. A time comes with its counts into a row that has none.
  void fill_down(const GridBlock& block);
  /// Puts all rows in the order of a column, see sorted_rows.
  void sort_by(int column, SortOrder order);

  /// Puts a whole row in the place of the one that stands there.
  void replace_row(int row, SheetRow with);

  /// The number of a failure mode, which gets one when it is new; 0 for no name.
  std::int16_t mode_number(const std::string& name);

  /// The rows have changed without the sheet: the current cell stays inside.
  void follow_rows();
  /// Shows another data set, or the same with other rows; an edit that is open is dropped.
  void show(std::int32_t data_id);

  /// "Data X: Enter time to failure in this column." and so on.
  static const char* hint(int column);
  static const char* heading(int column);

 private:
  std::string number_cell(const SheetRow& row, int index, int column) const;
  static void clear_cell(SheetRow& row, int column);
  void enter_x(SheetRow& row, const std::string& typed, int number);
  void enter_number(SheetRow& row, int column, const std::string& typed);
  void keep_unread(SheetRow& row, int column, const std::string& typed);
  static void set_number(SheetRow& row, int column, double number);
  bool is_bare(const std::string& typed) const;
  bool read(const std::string& typed, double& number) const;
  bool read_count(const std::string& typed, double& units) const;
  void put(int row, SheetRow changed);
  void take_rows(SheetRows rows);
  void drop_blank_end();
  void go_down();

  Project& project_;
  const Settings& settings_;
  std::int32_t data_id_;
  int shown_rows_ = least_rows;  // without the headings
  bool editing_ = false;
  std::string edit_text_;
  std::string remark_;
  mutable SharedRows<SheetRow> counted_;  ///< the rows that `left_out_` was counted in
  mutable int left_out_ = 0;
};

}  // namespace tavlo
