// Column layout: what the header line of a separated text says about its
// columns, and how one row of fields becomes a point.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "files/data_notation.h"
#include "files/point_list.h"
#include "files/text_lines.h"

namespace tavlo {

enum class DataColumn { x, fails, susps, status, count, mode, comment };
inline constexpr int data_columns = 7;

/// True when `name` is the name of a column, in any case.
bool is_column_name(std::string_view name);

/// The fields of one row.
using Fields = std::span<const std::string_view>;

class ColumnLayout {
 public:
  /// Reads the names. Refuses unknown and repeated ones, a header without times,
  /// and columns that contradict each other.
  FieldFault read_header(Fields names);

  /// Adds the point of one row. Missing fields at the end count as empty.
  FieldFault add_row(Fields fields, const ReadOptions& options, PointList& points) const;

 private:
  struct Units {
    double fails = 0;
    double susps = 0;
  };
  bool has(DataColumn column) const { return place(column) >= 0; }
  int place(DataColumn column) const { return places_[static_cast<std::size_t>(column)]; }
  // Here for the sake of speed: it runs several times for each row.
  std::string_view field(Fields fields, DataColumn column) const {
    const auto index = static_cast<std::size_t>(place(column));  // of a missing one: beyond all
    return index < fields.size() ? trimmed(fields[index]) : std::string_view();
  }
  bool tells_suspensions() const;
  FieldFault check_columns() const;
  FieldFault read_row_time(Fields fields, const ReadOptions& options, float& time,
                           bool& suspended) const;
  FieldFault read_row_units(Fields fields, bool suspended, Units& units) const;
  FieldFault add_words(Fields fields, const ReadOptions& options, PointList& points) const;

  std::array<int, data_columns> places_ = {-1, -1, -1, -1, -1, -1, -1};
  std::size_t count_ = 0;
};

}  // namespace tavlo
