// Library search: the rows in which every one of some words occurs, in any field and any case.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "guidance/library_rows.h"

namespace tavlo {

/// The rows from `first` on, ascending, that hold all words of `words`, which blanks separate;
/// all rows where there are none. Case does not count for the letters of the ANSI code page.
std::vector<std::uint32_t> find_library_rows(const LibraryRows& rows, std::size_t first,
                                             std::string_view words);

}  // namespace tavlo
