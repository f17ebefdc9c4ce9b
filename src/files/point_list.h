// PointList: points in the order in which they were entered, on their way into a
// sample or a data set. It is compact: a million rows take 32 MB, and words take
// room only where a file has them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "files/field_number.h"
#include "files/read_fault.h"
#include "fit/sample.h"
#include "project/records.h"

namespace tavlo {

/// A row of which not all could be read: what could not, by the column of the sheet.
struct HeldRow {
  std::size_t index = 0;
  std::vector<std::pair<int, std::string>> texts;
};

/// The rows of a text in the order of entry.
struct DataRows {
  std::vector<SampleRow> rows;
  std::vector<std::string> mode_names;   ///< failure mode 1 and on
  std::vector<std::string> comments;     ///< one a row, or none at all
  std::vector<std::string> groups = {};  ///< names, in the order in which they came first
  std::vector<HeldRow> held = {};        ///< by their index; only with ReadOptions::holds_unread
  std::vector<std::string> unused = {};  ///< headings of columns for no known purpose, a few
};

/// "not read: 'plant', 'asset'", of the columns that a text has for no known purpose; empty
/// where there are none.
std::string words_of_unused(const DataRows& data);

/// Moves the rows into `data`, in the order of entry.
void fill_data_set(DataRows rows, DataSet& data);

/// A row as a sheet holds it.
SheetRow entered(const SampleRow& from);

/// Whether a data file can hold the row: it needs a time other than 0, and units, of which
/// there may be 1e15 at the most.
bool can_be_exported(const SheetRow& row);

/// The number of rows, from the first, that a data file can hold: there may be 1e15 units in
/// all too.
std::size_t export_end(const DataSet& data);

/// What is wrong with a text that has more rows than that.
std::string words_of_too_many(std::size_t most_rows);

class PointList {
 public:
  /// Takes no more than `most_rows`.
  explicit PointList(std::size_t most_rows) : most_rows_(most_rows) {}

  /// Makes room for `rows` rows or for the most that there can be.
  void reserve(std::size_t rows);

  /// Adds one row. Refuses a row without units, and the row with which the set
  /// outgrows its limits.
  FieldFault add(float time, double fails, double susps) {
    const double units = fails + susps;
    units_ += units;
    if (units <= 0.0 || units_ > most_units || data_.rows.size() == most_rows_)
      return why_not_added(units);
    data_.rows.push_back({time, fails, susps, 0});
    return std::nullopt;
  }

  /// Adds a row of which the texts could not be read. Refuses what add() refuses, but not a row
  /// without units.
  FieldFault hold(const SampleRow& row, std::vector<std::pair<int, std::string>> texts);

  /// Gives the row added last a failure mode by its name (UTF-8; empty is none).
  FieldFault set_mode(std::string_view name);

  /// Puts the row added last into the group of the row before where it has that name: the rows
  /// of one group mostly follow each other.
  bool goes_on_with_group(std::string_view name) {
    const std::size_t rows = data_.rows.size();
    const std::int32_t last = rows > 1 ? data_.rows[rows - 2].group : 0;
    if (data_.groups.empty() || data_.groups[static_cast<std::size_t>(last)] != name) return false;
    data_.rows.back().group = last;
    return true;
  }

  /// Puts the row added last into a group by its name (UTF-8).
  FieldFault set_group(std::string_view name);

  /// Gives the row added last a comment (UTF-8).
  void set_comment(std::string_view comment);

  /// Notes the headings of columns that are not read.
  void set_unused(std::vector<std::string> headings) { data_.unused = std::move(headings); }

  bool empty() const { return data_.rows.empty(); }
  std::size_t size() const { return data_.rows.size(); }
  std::size_t held() const { return data_.held.size(); }

  /// True when any time is no whole number.
  bool has_fraction() const;

  /// The rows; the list is empty afterwards.
  DataRows take();

 private:
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
      return std::hash<std::string_view>()(name);
    }
  };

  FieldFault why_not_added(double units) const;

  std::size_t most_rows_;
  DataRows data_;
  template <class Number>
  using Numbers = std::unordered_map<std::string, Number, NameHash, std::equal_to<>>;
  Numbers<std::int16_t> mode_numbers_;
  Numbers<std::int32_t> group_numbers_;
  double units_ = 0;
};

}  // namespace tavlo
