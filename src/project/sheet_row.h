// SheetRow: one row of a data set as a person has entered it. Numbers are held as numbers;
// text is held for comments and for a cell that can't be read, which few rows have.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

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

/// The texts of a row, by the column of their cell: the comment, and what stands in the
/// cells that can't be read.
using RowTexts = std::array<std::string, sheet_column::count>;

struct SheetRow {
  double failures = 0;
  double suspensions = 0;
  float time = 0;
  float rank = 0;          ///< cumulative fraction failed, where the set has ranks of its own
  std::int16_t mode = 0;   ///< failure mode from 1; 0 is none
  std::uint8_t given = 0;  ///< bit c: the cell of column c holds a number
  std::int16_t spare = 0;  ///< held and saved; bit 0: left out of the analysis
  std::shared_ptr<const RowTexts> texts;  ///< null for a row without any

  bool has(int column) const { return (given >> column & 1) != 0; }
  void set_given(int column, bool is_given);

  /// Empty where the cell has no text.
  const std::string& text(int column) const;
  void set_text(int column, const std::string& text);

  /// A row that is left out keeps its cells, and has no part in ranks, fits, charts and totals.
  bool is_left_out() const { return (spare & 1) != 0; }
  void set_left_out(bool is_out);
  /// Whether the row is read for its point.
  bool has_point() const { return has(sheet_column::x) && !is_left_out(); }

  bool is_blank() const { return given == 0 && mode == 0 && !texts; }
  /// A column whose number can't be read; 0 when there is none.
  int unreadable_column() const;

  friend bool operator==(const SheetRow& a, const SheetRow& b);
};

}  // namespace tavlo
