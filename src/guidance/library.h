// Library: a folder with typical life parameters as a person keeps them: the header file says
// what the columns are, the data file holds the rows, and list files hold the choices of five
// columns. A library without a header file has the default columns.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "guidance/library_header.h"
#include "guidance/library_rows.h"
#include "ports/file_system.h"

namespace tavlo {

struct Library {
  std::string folder;       ///< empty for none
  std::string header_path;  ///< empty where the folder has none
  LibraryDefinition definition;
  LibraryDefinition saved;  ///< as the header file has it
  std::string data_path;    ///< of the data file that is open; empty for none
  FileFacts data_facts;     ///< as it was read
  LibraryRows rows;
  bool has_header_row = false;  ///< row 0 holds the names of the columns
  // What the person must know of the files, a sentence each.
  std::vector<std::string> notes;       ///< on the header file and the list files
  std::vector<std::string> data_notes;  ///< on the data file

  std::size_t first_row() const { return has_header_row ? 1 : 0; }
  bool is_unsaved() const { return definition != saved; }
};

/// The library that is there before one was opened: the default columns and no rows.
Library default_library();

/// The path of the header file in a folder, the first by name of several; nothing without one.
std::optional<std::string> find_library_header(FileSystem& files, const std::string& folder);

enum class HeaderFault { none, unreadable, corrupt };

struct LibraryOpening {
  Library library;  ///< with the default columns where its header can't be used
  HeaderFault fault = HeaderFault::none;
  FileResult read;  ///< of the header file
};

/// Opens the library of a folder, with its data file where it has one.
LibraryOpening open_library(FileSystem& files, const std::string& folder);

/// Opens a data file for the columns of a library. On a fault the library is as it was.
FileResult open_library_data(FileSystem& files, const std::string& path, Library& library);

/// Says anew where the data file does not match the columns, once these have changed.
void note_mismatch(Library& library);

/// Makes the file the data file that the library's header names.
void name_data_file(Library& library, const std::string& path);

/// Writes the header file to `path`. One that is protected is made writable first.
FileResult save_library_header(FileSystem& files, const std::string& path, Library& library);

/// Adds a row at the end of the data file; one that other programs have changed meanwhile is
/// read anew. A file of another code page is written as UTF-8, and the former one kept beside.
FileResult add_library_row(FileSystem& files, const std::vector<std::string>& fields,
                           Library& library);

/// What a column offers: its list and, where its kind says so, what stands in the data file, in
/// alphabetical order behind it; at most 10,000.
std::vector<std::string> choices_of(const Library& library, std::size_t column);

/// The folder and the name of a path, split at the last "/" or "\".
struct SplitPath {
  std::string folder;
  std::string name;
};
SplitPath split_path(const std::string& path);

}  // namespace tavlo
