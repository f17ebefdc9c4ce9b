#include "files/point_list.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>

#include "files/field_number.h"
#include "files/large_pages.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

/// The bits of a float as a number that rises with it.
std::uint32_t rising_bits(float value) {
  constexpr std::uint32_t sign = 0x80000000U;
  const auto bits = std::bit_cast<std::uint32_t>(value);
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

std::size_t place_of(std::uint64_t key) { return key & 0xFFFFFFFFU; }

/// Stable order by bits `shift` to `shift` + 10 of the keys.
void sort_by_digit(const std::vector<std::uint64_t>& from, std::vector<std::uint64_t>& to,
                   int shift) {
  std::array<std::size_t, 2049> starts{};
  for (const std::uint64_t key : from) ++starts[((key >> shift) & 2047) + 1];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  for (const std::uint64_t key : from) to[starts[(key >> shift) & 2047]++] = key;
}

/// Three counting passes: ten times faster than a comparing sort on a million
/// keys, and stable.
void sort_by_upper_half(std::vector<std::uint64_t>& keys) {
  std::vector<std::uint64_t> other(keys.size());
  sort_by_digit(keys, other, 32);
  sort_by_digit(other, keys, 43);
  sort_by_digit(keys, other, 53);
  keys.swap(other);
}

// One key holds the time above and the place below.
std::vector<std::uint64_t> ascending_keys(const std::vector<SampleRow>& rows) {
  std::vector<std::uint64_t> keys(rows.size());
  for (std::size_t i = 0; i < keys.size(); ++i)
    keys[i] = std::uint64_t{rising_bits(rows[i].time)} << 32 | i;
  if (!std::is_sorted(keys.begin(), keys.end())) sort_by_upper_half(keys);
  return keys;
}

DataPoint take_point(DataRows& from, std::size_t place) {
  const SampleRow& row = from.rows[place];
  DataPoint point;
  point.X = row.time;
  point.Fails = row.failures;
  point.Susps = row.suspensions;
  point.Mode = row.mode;
  point.Order = static_cast<std::int32_t>(place) + 1;
  if (!from.comments.empty()) point.Comment = std::move(from.comments[place]);
  return point;
}

}  // namespace

void fill_data_set(DataRows from, DataSet& data) {
  const std::vector<std::uint64_t> keys = ascending_keys(from.rows);
  data.Count = static_cast<std::int32_t>(keys.size());
  data.Points = {};
  data.Points.reserve(data.Count);
  prefer_large_pages(data.Points.data(), (keys.size() + 1) * sizeof(DataPoint));
  for (std::size_t i = 0; i < keys.size(); ++i) {
    // Rows are far apart in memory when the file is unsorted: ask ahead.
    constexpr std::size_t ahead = 24;
    if (i + ahead < keys.size()) __builtin_prefetch(&from.rows[place_of(keys[i + ahead])]);
    data.Points.push_back(take_point(from, place_of(keys[i])));
  }
  data.ModeNames = {};
  for (std::string& name : from.mode_names) data.ModeNames.push_back(std::move(name));
  data.nModes = data.ModeNames.bound();
  mark_changed(data);
}

void PointList::reserve(std::size_t rows) {
  data_.rows.reserve(std::min(rows, most_rows));
  prefer_large_pages(data_.rows.data(), data_.rows.capacity() * sizeof(SampleRow));
}

FieldFault PointList::why_not_added(double units) const {
  if (units <= 0.0) return "there are neither failures nor suspensions";
  if (units_ > most_units) return "there are more than 1e15 units up to here";
  return "there are more than 10000000 rows";
}

FieldFault PointList::set_mode(std::string_view name) {
  if (name.empty()) return std::nullopt;
  constexpr auto most_modes = std::numeric_limits<std::int16_t>::max();
  auto found = mode_numbers_.find(name);
  if (found == mode_numbers_.end()) {
    if (data_.mode_names.size() == most_modes) return "there are more than 32767 failure modes";
    data_.mode_names.emplace_back(name);
    const auto number = static_cast<std::int16_t>(data_.mode_names.size());
    found = mode_numbers_.emplace(name, number).first;
  }
  data_.rows.back().mode = found->second;
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
  *this = {};
  return taken;
}

}  // namespace tavlo
