// Import: the rows of a data file become a data set of the project. A person sees first how
// they will be read, and says what is otherwise than the content tells. Large files are looked
// at by their beginning; the whole is read when the person has said yes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/text_look.h"
#include "project/session.h"

namespace tavlo {

/// A data file that has been loaded. It stays where it is: its texts point into it.
class ImportFile {
 public:
  ImportFile() = default;
  ImportFile(const ImportFile&) = delete;
  ImportFile& operator=(const ImportFile&) = delete;

  /// Loads a file. False where that can't be done, which is told.
  bool load(Session& session, const std::string& path);

  /// True for a project or a file of another program, which is opened, not imported.
  bool is_to_be_opened() const { return is_to_be_opened_; }

  const std::string& path() const { return path_; }
  std::string_view text() const { return text_; }
  /// What is looked at: whole rows.
  std::string_view beginning() const { return beginning_; }
  bool is_looked_at_whole() const { return beginning_.size() == text_.size(); }

 private:
  std::string path_;
  std::string bytes_;
  std::string converted_;
  std::string_view text_;
  std::string_view beginning_;
  bool is_to_be_opened_ = false;
};

/// What a person has said of a file; by content where nothing.
struct ImportChoices {
  char separator = 0;  ///< as in ReadOptions
  DecimalSign decimal = DecimalSign::by_content;
  HeadLine head_line = HeadLine::by_content;
  std::map<std::size_t, std::optional<DataColumn>> columns = {};  ///< by place, from 0
  std::vector<std::string> failed = {};  ///< the only status values that mean failed, if any
};

/// What would become of the beginning of a file.
struct ImportPreview {
  TextLook look;                    ///< with the columns that the person chose
  std::vector<std::string> points;  ///< of each row shown, in the data notation
  std::size_t rows = 0;
  double failures = 0;
  double suspensions = 0;
  std::optional<ReadFault> fault;  ///< why it can't be read so
};

ImportPreview preview_import(const Session& session, const ImportFile& file,
                             const ImportChoices& choices);

/// "10 rows: 8 failures, 2 suspensions.", or in which line what is wrong.
std::string words_of(const ImportFile& file, const ImportPreview& preview);
std::string words_of(const ReadFault& fault);

/// Reads the whole file and adds its rows as a data set with fits, or fills the first set where
/// that is empty: one step. The index of the set, or 0 and why it can't be read so; nothing
/// has changed then. Escape may stop the reading, which is a fault.
int import_data(Session& session, const ImportFile& file, const ImportChoices& choices,
                std::optional<ReadFault>& fault);

}  // namespace tavlo
