#include "files/point_list.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "files/field_number.h"
#include "files/large_pages.h"
#include "files/text_lines.h"
#include "project/fit_records.h"

namespace tavlo {

std::string words_of_unused(const DataRows& data) {
  std::string words;
  for (const std::string& heading : data.unused)
    words += (words.empty() ? "not read: " : ", ") + quoted(heading);
  return words;
}

void fill_data_set(DataRows from, DataSet& data) {
  data.own_ranks = false;  // which the rows that went have had
  data.rows = {};
  data.rows.resize(from.rows.size());
  for (std::size_t i = 0; i < from.rows.size(); ++i) {
    SheetRow& row = data.rows.edit(i);
    row = entered(from.rows[i]);
    if (!from.comments.empty()) row.set_text(sheet_column::comment, from.comments[i]);
  }
  data.ModeNames = {};
  for (std::string& name : from.mode_names) data.ModeNames.push_back(std::move(name));
  mark_changed(data);
}

SheetRow entered(const SampleRow& from) {
  SheetRow row;
  row.time = from.time;
  row.failures = from.failures;
  row.suspensions = from.suspensions;
  row.mode = from.mode;
  row.set_given(sheet_column::x, true);
  row.set_given(sheet_column::fails, from.failures > 0);
  row.set_given(sheet_column::susps, from.suspensions > 0);
  return row;
}

bool can_be_exported(const SheetRow& row) {
  const double units = row.failures + row.suspensions;
  return row.has_point() && std::isnormal(row.time) &&
         std::min(row.failures, row.suspensions) >= 0.0 && units > 0.0 && units <= most_units;
}

// A sum of two lines is not rounded as that of one.
std::size_t export_end(const DataSet& data) {
  double units = 0;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const SheetRow& row = data.rows[i];
    if (!can_be_exported(row)) continue;
    units =
        std::max(units + (row.failures + row.suspensions), units + row.failures + row.suspensions);
    if (units > most_units) return i;
  }
  return data.rows.size();
}

std::string words_of_too_many(std::size_t most_rows) {
  return "there are more than " + std::to_string(most_rows) + " rows";
}

void PointList::reserve(std::size_t rows) {
  data_.rows.reserve(std::min(rows, most_rows_));
  prefer_large_pages(data_.rows.data(), data_.rows.capacity() * sizeof(SampleRow));
}

FieldFault PointList::why_not_added(double units) const {
  if (units <= 0.0) return "there are neither failures nor suspensions";
  if (units_ > most_units) return "there are more than 1e15 units up to here";
  return words_of_too_many(most_rows_);
}

FieldFault PointList::hold(const SampleRow& row, std::vector<std::pair<int, std::string>> texts) {
  const double units = row.failures + row.suspensions;
  units_ += units;
  if (units_ > most_units || data_.rows.size() == most_rows_)
    return why_not_added(std::max(units, 1.0));
  data_.held.push_back({data_.rows.size(), std::move(texts)});
  data_.rows.push_back(row);
  return std::nullopt;
}

namespace {

/// The place of a name among all that came before, from 0; nothing where there are too many.
template <class Numbers>
std::optional<std::size_t> place_of(std::string_view name, Numbers& numbers,
                                    std::vector<std::string>& names) {
  using Number = typename Numbers::mapped_type;
  auto found = numbers.find(name);
  if (found == numbers.end()) {
    if (names.size() == std::size_t{std::numeric_limits<Number>::max()}) return std::nullopt;
    found = numbers.emplace(name, static_cast<Number>(names.size())).first;
    names.emplace_back(name);
  }
  return static_cast<std::size_t>(found->second);
}

}  // namespace

FieldFault PointList::set_mode(std::string_view name) {
  if (name.empty()) return std::nullopt;
  const auto place = place_of(name, mode_numbers_, data_.mode_names);
  if (!place) return "there are more than 32767 failure modes";
  data_.rows.back().mode = static_cast<std::int16_t>(*place + 1);
  return std::nullopt;
}

FieldFault PointList::set_group(std::string_view name) {
  const auto place = place_of(name, group_numbers_, data_.groups);
  if (!place) return "there are more groups than can be counted";
  data_.rows.back().group = static_cast<std::int32_t>(*place);
  return std::nullopt;
}

void PointList::set_comment(std::string_view comment) {
  if (comment.empty()) return;
  data_.comments.resize(data_.rows.size());
  data_.comments.back() = comment;
}

bool PointList::has_fraction() const {
  return std::any_of(data_.rows.begin(), data_.rows.end(),
                     [](const SampleRow& row) { return std::trunc(row.time) != row.time; });
}

DataRows PointList::take() {
  if (!data_.comments.empty()) data_.comments.resize(data_.rows.size());
  DataRows taken = std::move(data_);
  *this = PointList(most_rows_);
  return taken;
}

}  // namespace tavlo
