// Column layout: what the header line of a separated text, or without one its rows, say
// about its columns, and how one row of fields becomes a point.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/decimal_comma.h"
#include "files/point_list.h"
#include "files/read_options.h"
#include "files/status_words.h"
#include "files/table_rows.h"

namespace tavlo {

class ColumnLayout {
 public:
  ColumnLayout(const ReadOptions& options, char separator);

  /// Reads the names. Refuses a header without times, two columns for one purpose and
  /// columns that contradict each other; columns for no known purpose are ignored.
  FieldFault read_header(Fields names);

  /// The columns of a text without a header, in their order.
  void set_columns(std::span<const DataColumn> columns);

  /// The columns as a person has told them, in a table whose head line has `width` names.
  /// Refuses what read_header refuses.
  FieldFault set_places(std::span<const std::optional<DataColumn>> columns, std::size_t width);

  /// Adds the point of one row. Missing fields at the end count as empty, and empty ones
  /// behind the last column are none.
  FieldFault add_row(Fields fields, PointList& points);

  /// Adds a row that add_row has refused, with the texts that can't be read. Refuses what no
  /// sheet should hold: a date, and fields that have no column.
  FieldFault hold_row(Fields fields, PointList& points);

  /// Headings, the first few, of columns for no known purpose.
  std::vector<std::string> unused(Fields names) const;

  /// What can only be said after the last row: an ignored column is a status, it seems.
  FieldFault check_ignored_columns() const;

  std::size_t columns() const { return count_; }
  bool comma_in_doubt() const { return comma_.in_doubt(); }

 private:
  struct Units {
    double fails = 0;
    double susps = 0;
  };
  /// A column without a purpose that has held nothing but words of a status so far.
  struct IgnoredColumn {
    std::size_t place;
    std::string name;
  };
  bool has(DataColumn column) const { return place(column) >= 0; }
  int place(DataColumn column) const { return places_[static_cast<std::size_t>(column)]; }
  // Here for the sake of speed: it runs several times for each row.
  std::string_view field(Fields fields, DataColumn column) const {
    const auto index = static_cast<std::size_t>(place(column));  // of a missing one: beyond all
    return index < fields.size() ? trimmed(fields[index]) : std::string_view();
  }
  bool counted() const { return has(DataColumn::fails) || has(DataColumn::susps); }
  bool tells_suspensions() const { return counted() || has(DataColumn::status); }
  bool is_chosen(DataColumn column) const;
  FieldFault place_chosen(Fields names);
  FieldFault place_known(Fields names);
  FieldFault place_column(DataColumn column, Fields names, std::size_t index);
  FieldFault check_columns(Fields names);
  std::string wish(const char* name_it, DataColumn column) const;
  void watch_ignored(Fields names);
  void drop_ignored(Fields fields);
  FieldFault check_width(Fields fields) const;
  FieldFault read_time_with_comma(std::string_view text, float& time, const PointList& points);
  FieldFault read_row_time(Fields fields, float& time, bool& suspended, const PointList& points);
  FieldFault read_row_units(Fields fields, bool suspended, Units& units, const PointList& points);
  FieldFault read_count(std::string_view field, double& units, const PointList& points);
  using HeldTexts = std::vector<std::pair<int, std::string>>;
  void hold_units(Fields fields, bool suspended, SampleRow& row, HeldTexts& texts,
                  const PointList& points);
  FieldFault add_words(Fields fields, PointList& points) const;

  const ReadOptions& options_;
  DecimalComma comma_;
  StatusMeaning status_;
  std::array<int, data_columns> places_;
  std::vector<IgnoredColumn> ignored_;
  std::size_t count_ = 0;
  bool has_headings_ = true;
};

}  // namespace tavlo
