// ReadOptions: what a person may say of a text that does not say it itself: what a sign or a
// comma means, what separates the columns, and which column is which.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "files/column_names.h"
#include "project/size_limits.h"

namespace tavlo {

/// What stands before the fraction of a number. By content: a full stop, or a comma
/// where it can mean nothing else.
enum class DecimalSign { by_content, point, comma };

/// Whether the first line names the columns. By content: it does unless it begins as a
/// number does.
enum class HeadLine { by_content, yes, no };

/// The column that a person named for a purpose; an empty name is no column at all.
struct ColumnChoice {
  DataColumn column = DataColumn::x;
  std::string name;
};

struct ReadOptions {
  bool negative_is_value = false;  ///< a negative time is one, not a suspension
  /// Below a head line a row that can't be read is kept as it was typed, where others can.
  bool holds_unread = false;
  bool comments = true;  ///< false skips them; a fit needs none
  DecimalSign decimal = DecimalSign::by_content;
  std::size_t most_rows = most_data_rows;  ///< a text with more is refused
  std::vector<ColumnChoice> columns = {};  ///< go before the names that are known
  /// Between the columns of a table; 0 is by content. A blank stands for any number of them.
  char separator = 0;
  HeadLine head_line = HeadLine::by_content;
  /// What each column is, by its place and whatever its name; the others are ignored. Empty:
  /// names and content tell.
  std::vector<std::optional<DataColumn>> places = {};
  std::vector<std::string> failed = {};  ///< the only status values that mean failed, if any
};

}  // namespace tavlo
