#include "files/point_list.h"

#include <algorithm>
#include <array>
#include <bit>
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

}  // namespace

void PointList::reserve(std::size_t rows) {
  rows_.reserve(std::min(rows, most_rows));
  prefer_large_pages(rows_.data(), rows_.capacity() * sizeof(Row));
}

FieldFault PointList::add(float time, double fails, double susps) {
  if (fails + susps <= 0.0) return "there are neither failures nor suspensions";
  units_ += fails + susps;
  if (units_ > most_units) return "there are more than 10000000 units up to here";
  if (rows_.size() == most_rows) return "there are more than 10000000 rows";
  rows_.push_back({fails, susps, time});
  return std::nullopt;
}

FieldFault PointList::set_mode(std::string_view name) {
  if (name.empty()) return std::nullopt;
  constexpr auto most_modes = std::numeric_limits<std::int16_t>::max();
  const auto [found, is_new] = mode_numbers_.try_emplace(std::string(name), std::int16_t{0});
  if (is_new) {
    if (mode_names_.size() == most_modes) return "there are more than 32767 failure modes";
    mode_names_.emplace_back(name);
    found->second = static_cast<std::int16_t>(mode_names_.size());
  }
  modes_.resize(rows_.size());
  modes_.back() = found->second;
  return std::nullopt;
}

void PointList::set_comment(std::string_view comment) {
  if (comment.empty()) return;
  comments_.resize(rows_.size());
  comments_.back() = comment;
}

// One key holds the time above and the place below.
std::vector<std::uint64_t> PointList::ascending_keys() const {
  std::vector<std::uint64_t> keys(rows_.size());
  for (std::size_t i = 0; i < keys.size(); ++i)
    keys[i] = std::uint64_t{rising_bits(rows_[i].time)} << 32 | i;
  if (!std::is_sorted(keys.begin(), keys.end())) sort_by_upper_half(keys);
  return keys;
}

DataPoint PointList::take_point(std::size_t place) {
  const Row& row = rows_[place];
  DataPoint point;
  point.X = row.time;
  point.Fails = row.fails;
  point.Susps = row.susps;
  point.Order = static_cast<std::int32_t>(place) + 1;
  if (!modes_.empty()) point.Mode = modes_[place];
  if (!comments_.empty()) point.Comment = std::move(comments_[place]);
  return point;
}

void PointList::move_into(DataSet& data) {
  if (!modes_.empty()) modes_.resize(rows_.size());
  if (!comments_.empty()) comments_.resize(rows_.size());
  const std::vector<std::uint64_t> keys = ascending_keys();
  data.Count = static_cast<std::int32_t>(keys.size());
  data.Points = {};
  data.Points.reserve(data.Count);
  prefer_large_pages(data.Points.data(), (keys.size() + 1) * sizeof(DataPoint));
  for (std::size_t i = 0; i < keys.size(); ++i) {
    // Rows are far apart in memory when the file is unsorted: ask ahead.
    constexpr std::size_t ahead = 24;
    if (i + ahead < keys.size()) __builtin_prefetch(&rows_[place_of(keys[i + ahead])]);
    data.Points.push_back(take_point(place_of(keys[i])));
  }
  data.ModeNames = {};
  for (std::string& name : mode_names_) data.ModeNames.push_back(std::move(name));
  data.nModes = data.ModeNames.bound();
  mark_changed(data);
  *this = {};
}

}  // namespace tavlo
