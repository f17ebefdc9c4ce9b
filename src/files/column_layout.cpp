#include "files/column_layout.h"

#include <algorithm>
#include <optional>

#include "files/field_number.h"
#include "files/text_lines.h"
#include "project/code_page.h"
#include "project/sheet_row.h"

namespace tavlo {

namespace {

std::string as_utf8(std::string_view field) {
  return is_utf8(field) ? std::string(field) : utf8_from_ansi(field);
}

/// "'a', 'b'"; of many names the first.
std::string list_of(Fields names) {
  constexpr std::size_t most = 8;
  std::string list;
  for (const std::string_view name : names.first(std::min(names.size(), most)))
    list += (list.empty() ? "" : ", ") + quoted(trimmed(name));
  return list + (names.size() > most ? " ..." : "");
}

constexpr const char* words_of_guessed_columns =
    "; without a line of headings the columns are times, failures and suspensions";

}  // namespace

ColumnLayout::ColumnLayout(const ReadOptions& options, char separator)
    : options_(options),
      comma_(options.decimal, separator != ','),
      status_{.turned_round = false, .failed = options.failed} {
  places_.fill(-1);
}

void ColumnLayout::set_columns(std::span<const DataColumn> columns) {
  has_headings_ = false;
  for (const DataColumn column : columns)
    places_[static_cast<std::size_t>(column)] = static_cast<int>(count_++);
}

FieldFault ColumnLayout::read_header(Fields names) {
  count_ = names.size();
  if (FieldFault fault = place_chosen(names)) return fault;
  if (FieldFault fault = place_known(names)) return fault;
  return check_columns(names);
}

FieldFault ColumnLayout::set_places(std::span<const std::optional<DataColumn>> columns,
                                    std::size_t width) {
  count_ = std::max(width, columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i]) continue;
    if (has(*columns[i]))
      return "two columns are chosen as the " + std::string(noun_of(*columns[i]));
    places_[static_cast<std::size_t>(*columns[i])] = static_cast<int>(i);
  }
  return check_columns({});
}

/// How to say on the command line which column is meant; those of places were chosen elsewhere.
std::string ColumnLayout::wish(const char* name_it, DataColumn column) const {
  if (!options_.places.empty()) return {};
  return std::string("; ") + name_it + " in File > Import, or with --columns " +
         std::string(role_of(column)) + "=NAME";
}

bool ColumnLayout::is_chosen(DataColumn column) const {
  return std::any_of(options_.columns.begin(), options_.columns.end(),
                     [column](const ColumnChoice& choice) { return choice.column == column; });
}

FieldFault ColumnLayout::place_chosen(Fields names) {
  for (const ColumnChoice& choice : options_.columns) {
    if (choice.name.empty()) continue;
    const auto is_named = [&](std::string_view name) {
      return equal_in_any_case(as_utf8(trimmed(name)), choice.name);
    };
    const auto found = std::find_if(names.begin(), names.end(), is_named);
    if (found == names.end())
      return "there is no column " + quoted(choice.name) + " (the header names " + list_of(names) +
             ")";
    const auto index = static_cast<std::size_t>(found - names.begin());
    if (FieldFault fault = place_column(choice.column, names, index)) return fault;
  }
  return std::nullopt;
}

FieldFault ColumnLayout::place_known(Fields names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto column = find_column(names[i]);
    const bool taken =
        std::find(places_.begin(), places_.end(), static_cast<int>(i)) != places_.end();
    if (!column || taken || is_chosen(*column)) continue;
    if (FieldFault fault = place_column(*column, names, i)) return fault;
  }
  return std::nullopt;
}

FieldFault ColumnLayout::place_column(DataColumn column, Fields names, std::size_t index) {
  int& known = places_[static_cast<std::size_t>(column)];
  if (known >= 0)
    return "the columns " + quoted(trimmed(names[static_cast<std::size_t>(known)])) + " and " +
           quoted(trimmed(names[index])) + " mean the same" + wish("name the right one", column);
  known = static_cast<int>(index);
  return std::nullopt;
}

FieldFault ColumnLayout::check_columns(Fields names) {
  if (!has(DataColumn::x))
    return names.empty()
               ? "no column is chosen as the " + std::string(noun_of(DataColumn::x))
               : "no column is named x, time, hours, cycles or the like" +
                     wish("name it", DataColumn::x) + " (the header names " + list_of(names) + ")";
  if (has(DataColumn::censored)) {
    if (has(DataColumn::status))
      return "a column of censored units can't stand beside a status" +
             wish("name one", DataColumn::status);
    std::swap(places_[static_cast<std::size_t>(DataColumn::censored)],
              places_[static_cast<std::size_t>(DataColumn::status)]);
    status_.turned_round = true;
  }
  if (!options_.failed.empty() && !has(DataColumn::status))
    return "no column is known as a status" + wish("name it", DataColumn::status);
  if (counted() && has(DataColumn::status)) return "a status can't stand beside fails or susps";
  if (counted() && has(DataColumn::count)) return "a count can't stand beside fails or susps";
  const bool is_told = is_chosen(DataColumn::status) || !options_.places.empty();
  if (!tells_suspensions() && !is_told) watch_ignored(names);
  return std::nullopt;
}

std::vector<std::string> ColumnLayout::unused(Fields names) const {
  constexpr std::size_t most = 4;
  std::vector<std::string> headings;
  for (std::size_t i = 0; i < names.size() && headings.size() < most; ++i)
    if (std::find(places_.begin(), places_.end(), static_cast<int>(i)) == places_.end() &&
        !trimmed(names[i]).empty())
      headings.push_back(as_utf8(trimmed(names[i])));
  return headings;
}

void ColumnLayout::watch_ignored(Fields names) {
  constexpr std::size_t most = 16;
  for (std::size_t i = 0; i < names.size() && ignored_.size() < most; ++i)
    if (std::find(places_.begin(), places_.end(), static_cast<int>(i)) == places_.end())
      ignored_.push_back({i, as_utf8(trimmed(names[i]))});
}

FieldFault ColumnLayout::check_ignored_columns() const {
  if (ignored_.empty()) return std::nullopt;
  const std::string name = quoted(ignored_.front().name);
  return "the column " + name +
         " looks like a status; choose it in File > Import, or say --columns status=" +
         ignored_.front().name + ", or --columns status= where it is none";
}

FieldFault ColumnLayout::check_width(Fields fields) const {
  const Fields beyond = fields.subspan(count_);
  if (std::all_of(beyond.begin(), beyond.end(),
                  [](std::string_view text) { return trimmed(text).empty(); }))
    return std::nullopt;
  return "the row has more fields than there are columns (" + std::to_string(count_) + ")";
}

FieldFault ColumnLayout::read_time_with_comma(std::string_view text, float& time,
                                              const PointList& points) {
  const std::string_view typed = text;
  if (FieldFault fault = comma_.replace(text, points)) return fault;
  const FieldFault fault = read_time(text, time);
  return fault && text != typed ? read_time(typed, time) : fault;  // the words quote what was typed
}

// A sign or a mark means a suspension only where no column tells.
FieldFault ColumnLayout::read_row_time(Fields fields, float& time, bool& suspended,
                                       const PointList& points) {
  std::string_view text = field(fields, DataColumn::x);
  suspended = text.starts_with('>') && !tells_suspensions();
  if (suspended) text = trimmed(text.substr(1));
  if (comma_.used() || read_time(text, time))
    if (FieldFault fault = read_time_with_comma(text, time, points)) return fault;
  if (time > 0.0F || options_.negative_is_value) return std::nullopt;
  if (tells_suspensions() || suspended) return "a time can't be negative";
  suspended = true;
  time = -time;
  return std::nullopt;
}

FieldFault ColumnLayout::read_count(std::string_view field, double& units,
                                    const PointList& points) {
  if (field.empty() || (!comma_.used() && !read_units(field, units))) return std::nullopt;
  if (FieldFault fault = comma_.replace(field, points)) return fault;
  return read_units(field, units);
}

FieldFault ColumnLayout::read_row_units(Fields fields, bool suspended, Units& units,
                                        const PointList& points) {
  if (counted()) {
    if (FieldFault fault = read_count(field(fields, DataColumn::fails), units.fails, points))
      return fault;
    return read_count(field(fields, DataColumn::susps), units.susps, points);
  }
  if (has(DataColumn::status)) {
    FieldFault fault = read_status(field(fields, DataColumn::status), status_, suspended);
    if (fault) return fault;
  }
  double& target = suspended ? units.susps : units.fails;
  target = 1.0;  // where no count says more
  return has(DataColumn::count) ? read_count(field(fields, DataColumn::count), target, points)
                                : std::nullopt;
}

FieldFault ColumnLayout::add_words(Fields fields, PointList& points) const {
  if (has(DataColumn::group) && !points.goes_on_with_group(field(fields, DataColumn::group)))
    if (FieldFault fault = points.set_group(as_utf8(field(fields, DataColumn::group))))
      return fault;
  if (has(DataColumn::comment) && options_.comments)
    points.set_comment(as_utf8(field(fields, DataColumn::comment)));
  return has(DataColumn::mode) ? points.set_mode(as_utf8(field(fields, DataColumn::mode)))
                               : std::nullopt;
}

FieldFault ColumnLayout::add_row(Fields fields, PointList& points) {
  if (fields.size() > count_)
    if (FieldFault fault = check_width(fields)) return fault;
  float time = 0;
  bool suspended = false;
  Units units;
  if (FieldFault fault = read_row_time(fields, time, suspended, points)) return fault;
  if (FieldFault fault = read_row_units(fields, suspended, units, points)) {
    const bool is_guessed = !has_headings_ && counted();
    return *fault + (is_guessed ? words_of_guessed_columns : "");
  }
  if (FieldFault fault = points.add(time, units.fails, units.susps)) return fault;
  if (!ignored_.empty()) drop_ignored(fields);
  return add_words(fields, points);
}

/// A status that can't be read stands among the failures, behind its count.
void ColumnLayout::hold_units(Fields fields, bool suspended, SampleRow& row, HeldTexts& texts,
                              const PointList& points) {
  const auto take = [&](DataColumn from, int column, double& units) {
    const std::string_view text = field(fields, from);
    if (!read_count(text, units, points)) return;
    units = 0;
    texts.emplace_back(column, as_utf8(text));
  };
  if (counted()) {
    take(DataColumn::fails, sheet_column::fails, row.failures);
    take(DataColumn::susps, sheet_column::susps, row.suspensions);
    return;
  }
  if (!has(DataColumn::status) && !has(DataColumn::count)) return;
  const std::string_view status = field(fields, DataColumn::status);
  if (has(DataColumn::status) && read_status(status, status_, suspended)) {
    const std::string count = as_utf8(field(fields, DataColumn::count));
    texts.emplace_back(sheet_column::fails, (count.empty() ? "" : count + " ") + as_utf8(status));
    return;
  }
  double& target = suspended ? row.suspensions : row.failures;
  target = 1.0;
  if (has(DataColumn::count))
    take(DataColumn::count, suspended ? sheet_column::susps : sheet_column::fails, target);
}

FieldFault ColumnLayout::hold_row(Fields fields, PointList& points) {
  if (fields.size() > count_)
    if (FieldFault fault = check_width(fields)) return fault;
  const std::string_view time = field(fields, DataColumn::x);
  if (is_date_or_time_of_day(time) || is_spelled_date(time)) return words_of_date(time);
  SampleRow row{};
  HeldTexts texts;
  bool suspended = false;
  if (read_row_time(fields, row.time, suspended, points)) {
    row.time = 0;
    if (!time.empty()) texts.emplace_back(sheet_column::x, as_utf8(time));
  }
  hold_units(fields, suspended, row, texts, points);
  if (texts.empty()) return add_row(fields, points);  // nothing to show in red: its fault stands
  if (FieldFault fault = points.hold(row, std::move(texts))) return fault;
  return add_words(fields, points);
}

// A field that is no word of a status tells that its column is none.
void ColumnLayout::drop_ignored(Fields fields) {
  std::erase_if(ignored_, [fields](const IgnoredColumn& column) {
    return column.place >= fields.size() || !is_status_word(trimmed(fields[column.place]));
  });
}

}  // namespace tavlo
