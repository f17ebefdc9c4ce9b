// Library columns: what the columns of a library of typical life parameters are called and
// which values each takes, with the columns of a library that says nothing of its own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tavlo {

/// Where the values of a column come from. The numbers are those of the header file.
enum class ColumnKind : std::int32_t {
  from_analysis,  ///< the list names what is taken of the present fit
  only_list,      ///< one of the list
  list_or_entry,  ///< one of the list, or anything typed
  list_or_data    ///< one of the list, or what the data file has in this column
};

/// The kinds in the words that a person chooses from, in the order of their numbers.
std::span<const char* const> column_kinds();

/// One column of a library. Items are numbered from 0 here.
struct LibraryColumn {
  std::string Name;
  ColumnKind Kind = ColumnKind::list_or_entry;
  std::vector<std::string> Items = {};
  std::int32_t Selected = -1;  ///< the item that was chosen; -1 for none

  /// What was chosen last is no part of what a column is.
  friend bool operator==(const LibraryColumn& a, const LibraryColumn& b) {
    return a.Name == b.Name && a.Kind == b.Kind && a.Items == b.Items;
  }
};

/// What a column of the kind `from_analysis` can take, in the order of the list that offers it.
enum class AnalysisSource {
  path,
  file_name,
  path_and_name,
  chart_title,
  chart_sub_title,
  date,
  model,
  method,
  quality,
  pve,
  confidence,
  units,
  share,
  typical_heading,
  infant_typical,
  chance_typical_range,
  chance_typical_low,
  chance_typical,
  chance_typical_high,
  wearout_typical,
  minimum_range,
  minimum_low,
  minimum,
  minimum_high,
  variation_heading,
  infant_variation,
  chance_variation_range,
  chance_variation_low,
  chance_variation,
  chance_variation_high,
  wearout_variation,
  counts_heading,
  units_tested,
  failures,
  suspensions,
  tested_and_suspended,
  failed_and_suspended
};

/// The names of the sources by their numbers. Those of dashes are headings and name no value.
std::span<const char* const> analysis_sources();

bool is_heading(AnalysisSource source);

/// The columns of a library without a header file, with the built-in lists.
std::vector<LibraryColumn> default_columns();

}  // namespace tavlo
