// Choice lists: the values that the columns Device, Equipment, Cause, Duty and Environment of a
// library offer where neither the library nor a list file says otherwise.
#pragma once

#include <span>
#include <string_view>

namespace tavlo {

struct ChoiceList {
  const char* column;                       ///< the name of the column that it belongs to
  std::span<const char* const> items;       ///< built in
  std::span<const char* const> list_files;  ///< the first of them that exists takes its place
};

/// The five lists.
std::span<const ChoiceList> choice_lists();

/// The list of a column by its name, any case; null for a column without.
const ChoiceList* find_choice_list(std::string_view column);

}  // namespace tavlo
