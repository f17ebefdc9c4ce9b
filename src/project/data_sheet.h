// DataSheet: the sheet in which one data set is typed, without its window. It
// owns only text; intake moves the text into the record.
#pragma once

#include <cstdint>
#include <string>

#include "numerics/error_reporter.h"
#include "project/grid.h"
#include "project/settings.h"

namespace tavlo {

namespace sheet_column {
inline constexpr int order = 0;
inline constexpr int x = 1;
inline constexpr int y = 2;
inline constexpr int fails = 3;
inline constexpr int susps = 4;
inline constexpr int mode = 5;
inline constexpr int comment = 6;
inline constexpr int count = 7;
}  // namespace sheet_column

/// Where the current cell goes when an edit ends.
enum class EditDirection { none, left, right, up, down };

class DataSheet {
 public:
  DataSheet(ErrorReporter& reporter, const Settings& settings);

  /// The sheet never shows fewer data rows than this.
  static constexpr int least_rows = 30;

  std::int32_t L_ID = 0;    ///< UniqueId of the data set shown
  bool bclean = true;       ///< the sheet agrees with its record
  std::uint8_t nclean = 0;  ///< bit c: column c was changed
  int lrows = 0;            ///< highest row that holds data

  Grid grd_Data;

  bool editing() const { return editing_; }
  void set_txt_Edit(std::string text) { edit_text_ = std::move(text); }

  /// Opens the edit box on the current cell with `text`.
  void start_edit(std::string text);

  /// Ends the edit: commits it to its cell and closes the box. Does nothing
  /// when no edit is open.
  void txt_Edit_LostFocus();

  /// Closes the box and leaves the cell as it was.
  void cancel_edit();

  /// Enter or an arrow key in the edit box: commits and moves the current cell.
  void finish_edit(EditDirection direction);

  /// Clears bclean and marks the column as changed.
  void SetChanged(int column);

  /// Adds rows, with their numbers, until `row` exists.
  void grow_to(int row);

  /// Enters the text of one cell; typing and pasting both come here. The X
  /// column reads the data notation, columns 1 to 4 take numbers. A text that
  /// stands there already changes nothing.
  void enter(int row, int column, const std::string& typed);

  /// "Data X: Enter time to failure in this column." and so on.
  static const char* hint(int column);
  static const char* heading(int column);

 private:
  void enter_x(int row, const std::string& typed);
  void go_down();
  double number_in(const std::string& text) const;
  void set_count(int row, int column, double count);

  ErrorReporter& reporter_;
  const Settings& settings_;
  bool editing_ = false;
  std::string edit_text_;
};

}  // namespace tavlo
