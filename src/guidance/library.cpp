#include "guidance/library.h"

#include <algorithm>
#include <set>

#include "files/plain_lines.h"
#include "files/text_lines.h"
#include "guidance/choice_lists.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr std::string_view header_start = "qmwblibdef";
constexpr std::uint64_t largest_header_file = std::uint64_t{16} << 20;
constexpr std::size_t most_choices = 10'000;

bool is_absolute(std::string_view name) {
  const bool has_drive = name.size() > 2 && name[1] == ':' && (name[2] == '\\' || name[2] == '/');
  return name.starts_with('/') || name.starts_with("\\\\") || has_drive;
}

bool is_file(FileSystem& files, const std::string& path) {
  FileFacts facts;
  return files.look_up(path, facts) && !facts.is_folder;
}

std::vector<std::string> trimmed_lines(const std::string& bytes) {
  std::vector<std::string> items;
  for (const std::string& line : plain_lines(bytes, most_library_items))
    if (const auto item = trimmed(line); !item.empty()) items.emplace_back(item);
  return items;
}

/// The lines of the first list file that exists take the place of the column's list.
void take_list_file(FileSystem& files, Library& library, LibraryColumn& column) {
  const ChoiceList* const list = find_choice_list(column.Name);
  if (!list) return;
  for (const char* const name : list->list_files) {
    const std::string path = library.folder + "/" + name;
    if (!files.exists(path)) continue;
    std::string bytes;
    const FileResult read = files.read_whole(path, largest_settings_file, bytes);
    if (read)
      column.Items = trimmed_lines(bytes);
    else
      library.notes.push_back(std::string(name) + ": " + read.message + ".");
    return;
  }
}

bool is_header_row(const LibraryRows& rows, const std::vector<LibraryColumn>& columns) {
  if (rows.count() == 0 || rows.field_count(0) != columns.size()) return false;
  std::vector<std::string> fields;
  rows.fields(0, fields);
  return std::equal(fields.begin(), fields.end(), columns.begin(),
                    [](const std::string& field, const LibraryColumn& column) {
                      return trimmed(field) == column.Name;
                    });
}

/// Whether the first row has names of columns, but not those that stand above the fields.
bool names_other_columns(const Library& library) {
  if (library.has_header_row || library.rows.count() == 0) return false;
  const auto& columns = library.definition.columns;
  std::vector<std::string> fields;
  library.rows.fields(0, fields);
  const auto named = std::count_if(fields.begin(), fields.end(), [&](const std::string& field) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const LibraryColumn& column) { return column.Name == trimmed(field); });
  });
  return named > 1 && 2 * static_cast<std::size_t>(named) > fields.size();
}

FileResult refusal(std::string words) { return {FileFault::device_error, std::move(words)}; }

bool is_changed(FileSystem& files, const Library& library) {
  FileFacts now;
  return files.look_up(library.data_path, now) &&
         (now.size != library.data_facts.size ||
          now.seconds_since_1970 != library.data_facts.seconds_since_1970);
}

void note_faults(const std::vector<ReadFault>& faults, Library& library) {
  for (const ReadFault& fault : faults)
    library.notes.push_back("Header file, line " + std::to_string(fault.line) + ": " + fault.what +
                            ".");
}

LibraryOpening read_header(FileSystem& files, Library library) {
  std::string bytes;
  const FileResult read = files.read_whole(library.header_path, largest_header_file, bytes);
  if (!read) return {std::move(library), HeaderFault::unreadable, read};
  HeaderReading header = read_library_header(bytes);
  if (!header.is_header) return {std::move(library), HeaderFault::corrupt, {}};
  library.definition = std::move(header.definition);
  note_faults(header.faults, library);
  return {std::move(library), HeaderFault::none, {}};
}

void open_named_data(FileSystem& files, Library& library) {
  const std::string& name = library.definition.data_file;
  if (name.empty()) return;
  const std::string path = is_absolute(name) ? name : library.folder + "/" + name;
  if (const FileResult read = open_library_data(files, path, library); !read)
    library.data_notes.push_back("Data file " + quoted(name) + ": " + read.message + ".");
}

}  // namespace

Library default_library() {
  Library library;
  library.definition.columns = default_columns();
  library.saved = library.definition;
  return library;
}

std::optional<std::string> find_library_header(FileSystem& files, const std::string& folder) {
  std::vector<std::string> names;
  if (!files.list_folder(folder, names)) return std::nullopt;
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    const std::string path = folder + "/" + name;
    const bool is_kept_former = name.ends_with('~');
    if (lower_case(name).starts_with(header_start) && !is_kept_former && is_file(files, path))
      return path;
  }
  return std::nullopt;
}

LibraryOpening open_library(FileSystem& files, const std::string& folder) {
  Library library = default_library();
  library.folder = folder;
  library.header_path = find_library_header(files, folder).value_or("");
  LibraryOpening opening{std::move(library), HeaderFault::none, {}};
  if (!opening.library.header_path.empty())
    opening = read_header(files, std::move(opening.library));
  for (LibraryColumn& column : opening.library.definition.columns)
    take_list_file(files, opening.library, column);
  opening.library.saved = opening.library.definition;
  if (opening.fault == HeaderFault::none) open_named_data(files, opening.library);
  return opening;
}

FileResult open_library_data(FileSystem& files, const std::string& path, Library& library) {
  std::string bytes;
  FileFacts facts;
  FileResult result = files.read_whole(path, largest_data_file, bytes);
  if (result) result = files.look_up(path, facts);
  if (!result) return result;
  LibraryRows rows;
  if (const auto fault = rows.read(std::move(bytes)))
    return refusal("line " + std::to_string(fault->line) + ": " + fault->what);
  library.rows = std::move(rows);
  library.data_path = path;
  library.data_facts = facts;
  library.has_header_row = is_header_row(library.rows, library.definition.columns);
  note_mismatch(library);
  return {};
}

// Values under a wrong heading would mislead.
void note_mismatch(Library& library) {
  library.data_notes.clear();
  if (names_other_columns(library))
    library.data_notes.emplace_back(
        "The first row of the data file names other columns, or these in another order.");
  std::size_t first = 0, number = 0;
  const std::size_t columns = library.definition.columns.size();
  for (std::size_t row = library.first_row(); row < library.rows.count(); ++row) {
    if (library.rows.field_count(row) == columns) continue;
    if (number++ == 0) first = row;
  }
  if (number == 0) return;
  const std::size_t shown = first + 1 - library.first_row();
  std::string note = "Row " + std::to_string(shown) + " has " +
                     std::to_string(library.rows.field_count(first)) + " fields; the library has " +
                     std::to_string(columns) + " columns.";
  if (number > 1) note += " So it is with " + std::to_string(number) + " rows.";
  library.data_notes.push_back(note);
}

void name_data_file(Library& library, const std::string& path) {
  LibraryDefinition& definition = library.definition;
  const bool had_reference = definition.reference_file != definition.data_file;
  const SplitPath split = split_path(path);
  definition.data_file = split.folder == library.folder ? split.name : path;
  if (!had_reference) definition.reference_file = definition.data_file;
}

FileResult save_library_header(FileSystem& files, const std::string& path, Library& library) {
  if (const auto fault = find_unwritable(library.definition)) return refusal(*fault);
  FileFacts facts;
  FileResult result;
  if (files.look_up(path, facts) && facts.is_read_only) result = files.make_writable(path);
  if (result) result = files.write_keeping_former(path, write_library_header(library.definition));
  if (!result) return result;
  library.header_path = path;
  library.saved = library.definition;
  return result;
}

FileResult add_library_row(FileSystem& files, const std::vector<std::string>& fields,
                           Library& library) {
  if (library.data_path.empty()) return refusal("no data file is open");
  if (is_changed(files, library))
    if (FileResult read = open_library_data(files, library.data_path, library); !read) return read;
  const std::string row = write_library_row(fields);
  const std::string more = library.rows.continuation(row);
  if (row.size() > longest_line) return refusal("the row is too long");
  if (library.rows.whole_text().size() + more.size() > largest_data_file)
    return {FileFault::too_large, "the data file would become too large"};
  FileResult written = library.rows.is_utf8()
                           ? files.append(library.data_path, more)
                           : files.write_keeping_former(
                                 library.data_path, std::string(library.rows.whole_text()) + more);
  if (!written) return written;
  files.look_up(library.data_path, library.data_facts);
  library.rows.add(row);
  return {};
}

std::vector<std::string> choices_of(const Library& library, std::size_t column) {
  const LibraryColumn& definition = library.definition.columns[column];
  std::vector<std::string> choices = definition.Items;
  if (definition.Kind != ColumnKind::list_or_data) return choices;
  std::set<std::string> more;
  std::vector<std::string> fields;
  for (std::size_t row = library.first_row();
       row < library.rows.count() && more.size() < most_choices; ++row) {
    library.rows.fields(row, fields);
    if (column < fields.size() && !fields[column].empty()) more.insert(fields[column]);
  }
  for (const std::string& item : choices) more.erase(item);
  choices.insert(choices.end(), more.begin(), more.end());
  return choices;
}

SplitPath split_path(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  if (slash == std::string::npos) return {"", path};
  return {path.substr(0, slash), path.substr(slash + 1)};
}

}  // namespace tavlo
