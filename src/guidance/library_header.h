// Library header: the text file that says which data file a library has, which columns that
// file has, and which values each column takes. People edit it by hand: what can't be read is
// told by its line, and what can is kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/read_fault.h"
#include "guidance/library_columns.h"

namespace tavlo {

/// What a header file holds beyond these is left out and told.
inline constexpr std::size_t most_library_columns = 1000;
inline constexpr std::size_t most_library_items = 100'000;  ///< of all columns together

struct LibraryDefinition {
  std::string data_file;       ///< as it was written; relative to the library's folder
  std::string reference_file;  ///< the data file's name where there is none of its own
  std::vector<LibraryColumn> columns;

  friend bool operator==(const LibraryDefinition&, const LibraryDefinition&) = default;
};

struct HeaderReading {
  bool is_header = false;  ///< false for a text that does not begin as one; it is not read then
  LibraryDefinition definition;
  std::vector<ReadFault> faults;  ///< at most the first twenty
};

/// Reads a header file. A section that ends too early keeps what was read of it.
HeaderReading read_library_header(std::string_view bytes);

/// Why the columns can't be written so that they are read back, in words; nothing when all is
/// well.
std::optional<std::string> find_unwritable(const LibraryDefinition& definition);

/// The header file of a definition in which find_unwritable() finds nothing.
std::string write_library_header(const LibraryDefinition& definition);

}  // namespace tavlo
