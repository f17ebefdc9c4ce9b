// Text table: aligned columns for people.
#pragma once

#include <string>
#include <vector>

namespace tavlo::cli {

class TextTable {
 public:
  explicit TextTable(std::vector<std::string> headings) { add(std::move(headings)); }

  /// Adds a row; it has as many cells as there are headings.
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  /// The lines, indented by two blanks: the first `left_columns` columns flush
  /// left, the others flush right.
  std::string text(std::size_t left_columns) const;

 private:
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tavlo::cli
