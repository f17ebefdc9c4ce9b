#include "actions/import_data.h"

#include <algorithm>
#include <utility>

#include "actions/busy_pointer.h"
#include "actions/file_faults.h"
#include "actions/intake.h"
#include "actions/new_project.h"
#include "actions/pasted_rows.h"
#include "actions/recent_files.h"
#include "actions/records.h"
#include "files/data_text.h"
#include "files/foreign_type.h"
#include "files/shortest_number.h"
#include "files/text_encoding.h"

namespace tavlo {

namespace {

constexpr std::size_t looked_at = std::size_t{256} << 10;  // bytes
constexpr std::size_t shown_rows = 20;

ReadOptions options_of(const Session& session, const ImportChoices& choices) {
  return {.negative_is_value = !session.settings.NegativeSuspension,
          .decimal = choices.decimal,
          .separator = choices.separator,
          .head_line = choices.head_line,
          .failed = choices.failed};
}

/// The first look and then what the person has said of the columns.
std::optional<ReadFault> look_at(const ImportFile& file, const ImportChoices& choices,
                                 const ReadOptions& options, TextLook& look) {
  auto fault = look_at_text(file.beginning(), options, shown_rows, look);
  for (const auto& [place, column] : choices.columns)
    if (place < look.columns.size() && look.separator != 0) look.columns[place] = column;
  return fault;
}

/// A table is read as it was shown, whatever stands behind its beginning.
ReadOptions shown_options(ReadOptions options, const TextLook& look) {
  if (look.separator == 0) return options;
  options.places = look.columns;
  options.head_line = look.has_head_line ? HeadLine::yes : HeadLine::no;
  return options;
}

void append_point(std::string& text, const char* mark, float time, double units) {
  if (units <= 0.0) return;
  text += (text.empty() ? "" : ", ") + std::string(mark);
  append_shortest(text, time);
  if (units == 1.0) return;
  text += 'x';
  append_shortest(text, units);
}

std::string point_text(const SampleRow& row) {
  std::string text;
  append_point(text, "", row.time, row.failures);
  append_point(text, ">", row.time, row.suspensions);
  return text;
}

void count(const DataRows& data, ImportPreview& preview) {
  preview.rows = data.rows.size();
  for (const SampleRow& row : data.rows) {
    preview.failures += row.failures;
    preview.suspensions += row.suspensions;
  }
  const std::size_t shown = std::min(preview.look.rows.size(), data.rows.size());
  for (std::size_t i = 0; i < shown; ++i) preview.points.push_back(point_text(data.rows[i]));
}

/// The index of a set without rows: the first one, or a new one; 0 when none can be made.
int empty_set(Session& session) {
  if (session.project.data(1).rows.empty()) return 1;
  const int before = session.project.data.bound();
  add_data_set(session);
  const int now = session.project.data.bound();
  return now > before ? now : 0;
}

}  // namespace

bool ImportFile::load(Session& session, const std::string& path) {
  path_ = path;
  // A project without the ending of one is seen to be one only here.
  const auto limit = [&](std::string_view start) { return largest_file(file_type(start, path)); };
  const FileResult read = session.ports.file_system.read_whole(path, limit, bytes_);
  if (!read) {
    tell_fault(session, path, read);
    return false;
  }
  is_to_be_opened_ = file_type(bytes_, path) != FileType::unknown;
  if (is_to_be_opened_) {
    std::string().swap(bytes_);  // it is read again
    return true;
  }
  text_ = bytes_;
  // What is no text is told by the preview.
  if (!decode_text(text_, converted_))
    beginning_ = beginning_of(text_, looked_at);
  else
    beginning_ = text_ = bytes_;
  return true;
}

ImportPreview preview_import(const Session& session, const ImportFile& file,
                             const ImportChoices& choices) {
  ImportPreview preview;
  const ReadOptions options = options_of(session, choices);
  preview.fault = look_at(file, choices, options, preview.look);
  if (preview.fault) return preview;
  DataRows data;
  preview.fault = read_data_rows(file.beginning(), shown_options(options, preview.look), data);
  count(data, preview);
  return preview;
}

std::string words_of(const ReadFault& fault) {
  return "Line " + std::to_string(fault.line) + ": " + fault.what + ".";
}

std::string words_of(const ImportFile& file, const ImportPreview& preview) {
  if (preview.fault) return words_of(*preview.fault);
  const std::string counted =
      words_of_units(preview.rows, preview.failures, preview.suspensions) + ".";
  return file.is_looked_at_whole()
             ? counted
             : "In the first part of the file " + counted + "  Import reads the whole file.";
}

int import_data(Session& session, const ImportFile& file, const ImportChoices& choices,
                std::optional<ReadFault>& fault) {
  const ReadOptions options = options_of(session, choices);
  TextLook look;
  DataRows data;
  fault = look_at(file, choices, options, look);
  if (!fault) {
    const BusyPointer busy(session.ports.views);
    fault =
        read_data_rows(file.text(), shown_options(options, look), data, &session.ports.progress);
  }
  if (fault) return 0;
  const int index = empty_set(session);
  if (index == 0) return 0;
  fill_data_set(std::move(data), session.project.data(index));
  const std::string title = file_title(file.path());
  rename_data(session, index, title);
  if (index == 1 || session.project.name.empty()) session.project.name = title;
  session.gDataForm(index)->follow_rows();
  bool clean = true;
  CheckDirtyData(session, index, clean);
  session.step = "Import";
  const DataSheet& sheet = *session.gDataForm(index);
  session.ports.views.status(words_of_rows(sheet, 1, sheet.last_row()));
  return index;
}

}  // namespace tavlo
