// PointList: points in the order in which they were entered, on their way into
// a data set. It is compact, so that a million rows are held twice only in part.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/read_fault.h"
#include "project/records.h"

namespace tavlo {

class PointList {
 public:
  /// The most rows of one data set.
  static constexpr std::size_t most_rows = 10'000'000;

  /// Makes room for `rows` rows or for the most that there can be.
  void reserve(std::size_t rows);

  /// Adds one row. Refuses a row without units, and the row with which the set
  /// outgrows its limits.
  FieldFault add(float time, double fails, double susps);

  /// Gives the row added last a failure mode by its name (UTF-8; empty is none).
  FieldFault set_mode(std::string_view name);

  /// Gives the row added last a comment (UTF-8).
  void set_comment(std::string_view comment);

  bool empty() const { return rows_.empty(); }

  /// Moves the rows into `data`, ascending by X, equal times in the order of
  /// entry, which `Order` keeps. The list is empty afterwards.
  void move_into(DataSet& data);

 private:
  struct Row {
    double fails = 0;
    double susps = 0;
    float time = 0;
  };
  std::vector<std::uint64_t> ascending_keys() const;
  DataPoint take_point(std::size_t place);

  std::vector<Row> rows_;
  std::vector<std::int16_t> modes_;    ///< empty until there is one
  std::vector<std::string> comments_;  ///< empty until there is one
  std::vector<std::string> mode_names_;
  std::unordered_map<std::string, std::int16_t> mode_numbers_;
  double units_ = 0;
};

}  // namespace tavlo
