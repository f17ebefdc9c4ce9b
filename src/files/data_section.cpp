#include "files/data_section.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr ProjectText::Place data_place = {"Data Read Write Error: ", "RW_Data routine:"};

constexpr int data_head_fields = 15;
constexpr int point_fields = 7;

// The bytes that an element takes at the least, when every value is one digit.
constexpr std::size_t least_text = 1;
constexpr std::size_t least_data_point = 15;  // with the line of its comment
constexpr std::size_t least_inspection = 8;
constexpr std::size_t least_check = 6;
constexpr std::size_t least_profile = 10;
constexpr std::size_t least_number = 2;

/// The state of the ranks, in the order number of the summary row.
namespace rank_state {
constexpr std::int32_t own = 1;
constexpr std::int32_t own_bits = 63;
constexpr std::int32_t exact = 64;
constexpr std::int32_t benard = 128;
}  // namespace rank_state

/// The last two bits of the spare number of a row with units whose time is 0. Bit 0 marks a
/// row that is left out; here alone it says that there is no time. Rows in memory have no need
/// of the second bit, which says that the 0 is a time.
namespace timeless {
constexpr std::int16_t has_no_time = 1;
constexpr std::int16_t zero_is_time = 2;
constexpr std::int16_t bits = 3;
}  // namespace timeless

/// What a file says of a set before its rows.
struct Head {
  bool FitsCurrent = true;
  bool Flag2 = false;
  double Reserved = 0;
  double XMax = 0;
  double XMin = 0;
  double YMax = 0;
  double YMin = 0;
  std::int32_t UniqueId = 0;
  std::int32_t Count = 0;
  std::int16_t Changed = 0;
  std::int16_t nModes = 0;
  std::int16_t nInspection = 0;
  std::int16_t nProfiles = 0;
  std::int16_t XScale = 2;
  std::int16_t YScale = 32;
  std::int16_t nModesAgain = 0;
};

/// A row, or the sums of all.
struct Point {
  double Fails = 0;
  double Susps = 0;
  float X = 0;
  float Y = 0;
  std::int32_t Order = 0;
  std::int16_t Mode = 0;
  std::int16_t Spare = 0;
};

// --- both directions

template <class Archive, class Fields>
void visit_head(Archive& file, Fields& head) {
  file.count(data_head_fields);
  file.values(head.FitsCurrent, head.Flag2, head.Reserved, head.XMax, head.XMin, head.YMax,
              head.YMin, head.UniqueId, head.Count, head.Changed);
  file.require_bytes_for(head.Count, least_data_point);  // at once, so that its own line is named
  file.values(head.nModes, head.nInspection, head.nProfiles);
  for (const std::int16_t bound : {head.nModes, head.nInspection, head.nProfiles})
    file.require_bytes_for(bound, least_text);
  file.values(head.XScale, head.YScale, head.nModesAgain);
  file.require_bound(head.nModesAgain, head.nModes);
}

template <class Archive, class Names>
void visit_mode_names(Archive& file, Names& names, int bound) {
  file.make_room(names, bound, least_text);
  if (bound > 0)
    for (int i = 0; i <= bound; ++i) file.text(names(i));
}

template <class Archive, class Fields>
void visit_point(Archive& file, Fields& point) {
  file.values(point.Fails, point.Susps, point.X, point.Y, point.Order, point.Mode, point.Spare);
}

template <class Archive, class List>
void visit_inspection(Archive& file, List& list) {
  file.values(as_int(list.Last));
  file.make_room(list.Times, list.Last, least_check);
  file.make_room(list.Counts, list.Last, least_check);
  file.make_room(list.Flags, list.Last, least_check);
  for (int i = 0; i <= list.Last; ++i) file.values(list.Times(i), list.Counts(i), list.Flags(i));
}

template <class Archive, class Profile>
void visit_profile(Archive& file, Profile& profile) {
  file.text(profile.Title);
  file.values(profile.Spare, profile.Cols, profile.Rows, profile.Kind);
  file.make_table(profile.Table, profile.Rows, profile.Cols, least_number);
  auto number = profile.Table.begin();
  for (int row = 0; row <= profile.Rows; ++row) {
    for (int column = 0; column <= profile.Cols; ++column) file.value(*number++);
    file.end_values();
  }
}

/// Lists of one element are not in the file.
template <class Archive, class Records>
void visit_lists(Archive& file, Records& data, int inspections, int profiles) {
  file.make_room(data.Inspection, inspections, least_inspection);
  for (int i = 0; inspections > 0 && i <= inspections; ++i)
    visit_inspection(file, data.Inspection(i));
  file.make_room(data.Profiles, profiles, least_profile);
  for (int i = 0; profiles > 0 && i <= profiles; ++i) visit_profile(file, data.Profiles(i));
}

/// True where the time is 0 or none, which only the spare number tells.
bool is_timeless(const Point& point) {
  return point.X == 0 && (point.Fails != 0 || point.Susps != 0);
}

/// Ranks of a kind, of no rows yet.
DataReading no_rows(RankKind ranks) { return {{}, ranks, false, 0}; }

// --- reading

void require_mode(ProjectReader& file, const Point& point, int modes) {
  if (point.Mode < 0 || point.Mode > modes)
    file.refuse(run_time::subscript, "failure mode " + std::to_string(point.Mode) +
                                         " is none of the " + std::to_string(modes) +
                                         " that the data set names");
}

SheetRow row_of(const Point& point, bool own_ranks) {
  SheetRow row;
  row.failures = point.Fails;
  row.suspensions = point.Susps;
  row.time = point.X;
  row.mode = point.Mode;
  const bool is_marked =
      is_timeless(point) && (point.Spare & timeless::bits) == timeless::has_no_time;
  row.spare = is_marked ? static_cast<std::int16_t>(point.Spare & ~timeless::bits) : point.Spare;
  const bool has_time = point.X != 0 || (is_timeless(point) && !is_marked);
  row.set_given(sheet_column::x, has_time);
  row.set_given(sheet_column::fails, point.Fails != 0);
  row.set_given(sheet_column::susps, point.Susps != 0);
  if (own_ranks && point.Y != 0) {
    row.rank = point.Y;
    row.set_given(sheet_column::y, true);
  }
  return row;
}

/// The rows in the order of their numbers; one that has none keeps its place.
void sort_by_order(SharedRows<SheetRow>& rows, std::vector<std::int32_t> order) {
  for (std::size_t i = 0; i < order.size(); ++i)
    if (order[i] <= 0) order[i] = static_cast<std::int32_t>(i) + 1;
  if (std::is_sorted(order.begin(), order.end())) return;
  std::vector<std::size_t> places(order.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(),
                   [&](std::size_t a, std::size_t b) { return order[a] < order[b]; });
  SharedRows<SheetRow> sorted;
  sorted.resize(rows.size());
  for (std::size_t i = 0; i < places.size(); ++i) sorted.edit(i) = rows[places[i]];
  rows = std::move(sorted);
}

void drop_blank_end(SharedRows<SheetRow>& rows) {
  std::size_t size = rows.size();
  while (size > 0 && rows[size - 1].is_blank() && rows[size - 1].spare == 0) --size;
  if (size < rows.size()) rows.resize(size);
}

void read_comments(ProjectReader& file, SharedRows<SheetRow>& rows) {
  std::string comment;
  file.text(comment);  // of the summary row
  for (std::size_t i = 0; i < rows.size(); ++i) {
    file.text(comment);
    if (!comment.empty()) rows.edit(i).set_text(sheet_column::comment, comment);
  }
}

/// Nothing where the section does not say how the rows were ranked.
std::optional<RankKind> kind_of_state(std::int32_t state) {
  if ((state & rank_state::exact) != 0) return RankKind::exact;
  const bool is_stated = (state & (rank_state::benard | rank_state::own_bits)) != 0;
  return is_stated ? std::optional(RankKind::benard) : std::nullopt;
}

std::int32_t plain_state(bool own_ranks, RankKind ranks) {
  if (own_ranks) return rank_state::own;
  return ranks == RankKind::benard ? rank_state::benard : rank_state::exact;
}

/// The state as it came, bits of others too, as long as it says how the rows are ranked now.
std::int32_t state_of(const DataSet& data, RankKind ranks) {
  const std::int32_t held = data.SummaryState;
  const bool was_own = (held & rank_state::own_bits) != 0;
  if (was_own == data.own_ranks && kind_of_state(held) == ranks) return held;
  constexpr std::int32_t known = rank_state::own_bits | rank_state::exact | rank_state::benard;
  return (held & ~known) | plain_state(data.own_ranks, ranks);
}

std::optional<RankKind> read_rows(ProjectReader& file, DataSet& data, const Head& head) {
  file.count(point_fields);
  Point point;
  visit_point(file, point);
  const std::int32_t state = point.Order;
  const std::optional<RankKind> ranks = kind_of_state(state);
  data.SummarySpare = point.Spare;
  data.SummaryMode = point.Mode;
  data.own_ranks = (state & rank_state::own_bits) != 0;
  const bool is_plain = ranks && state == plain_state(data.own_ranks, *ranks);
  data.SummaryState = is_plain ? 0 : state;
  std::vector<std::int32_t> order(static_cast<std::size_t>(head.Count));
  data.rows.resize(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    visit_point(file, point);
    require_mode(file, point, head.nModes);
    data.rows.edit(i) = row_of(point, data.own_ranks);
    order[i] = point.Order;
  }
  read_comments(file, data.rows);
  sort_by_order(data.rows, std::move(order));
  drop_blank_end(data.rows);
  return ranks;
}

// --- writing

/// The ranks that the rows have as they stand. Rows that can't be ranked have none.
DataReading reading_of(const DataSet& data, Ranking ranking) {
  if (data.is_read()) return data.reading;
  if (ranking == Ranking::none) return no_rows(data.reading.ranks());
  try {
    return {data.rows, data.reading.ranks(), data.own_ranks, data.ModeNames.bound()};
  } catch (const RunTimeError&) {
    return no_rows(data.reading.ranks());
  }
}

std::int16_t spare_of_timeless(const SheetRow& row) {
  const int spare = row.spare;
  if (!row.has(sheet_column::x))
    return static_cast<std::int16_t>((spare & ~timeless::bits) | timeless::has_no_time);
  return static_cast<std::int16_t>(row.is_left_out() ? spare | timeless::zero_is_time : spare);
}

Point point_of(const SheetRow& row, std::size_t index, const DataReading& reading) {
  Point point;
  point.Fails = row.failures;
  point.Susps = row.suspensions;
  point.X = row.time;
  point.Y = row.has(sheet_column::y) ? row.rank : reading.rank_of(index);
  point.Order = static_cast<std::int32_t>(index) + 1;
  point.Mode = row.mode;
  point.Spare = row.spare;
  if (is_timeless(point)) point.Spare = spare_of_timeless(row);
  return point;
}

Point summary_of(const DataSet& data, const DataReading& reading) {
  Point sums;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    if (!data.rows[i].has_point()) continue;
    sums.Fails += data.rows[i].failures;
    sums.Susps += data.rows[i].suspensions;
  }
  constexpr double most = std::numeric_limits<double>::max();
  sums.Fails = std::clamp(sums.Fails, -most, most);
  sums.Susps = std::clamp(sums.Susps, -most, most);
  sums.Order = state_of(data, reading.ranks());
  sums.Mode = data.SummaryMode;
  sums.Spare = data.SummarySpare;
  return sums;
}

/// Times and ranks of the first and the last failure: those of the rows as they will be read,
/// so that they stay when the file is opened and saved.
void set_limits(Head& head, const DataSet& data, const DataReading& reading) {
  const Sample& sample = reading.sample();
  bool any = false;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0)) continue;
    head.XMax =
        ProjectWriter::as_read(data.rows[static_cast<std::size_t>(sample.entry[i]) - 1].time);
    head.YMax = data.own_ranks ? ProjectWriter::as_read(sample.rank[i]) : sample.rank[i];
    if (!any) head.XMin = head.XMax;
    if (!any) head.YMin = head.YMax;
    any = true;
  }
}

Head head_of(const DataSet& data, bool fits_current, const DataReading& reading) {
  Head head;
  head.FitsCurrent = fits_current;
  head.Changed = data.is_read() ? 0 : 1;
  head.Flag2 = data.Flag2;
  head.Reserved = data.Reserved;
  head.UniqueId = data.UniqueId;
  head.Count = static_cast<std::int32_t>(data.rows.size());
  head.nModes = head.nModesAgain = static_cast<std::int16_t>(data.ModeNames.bound());
  head.nInspection = static_cast<std::int16_t>(data.Inspection.bound());
  head.nProfiles = static_cast<std::int16_t>(data.Profiles.bound());
  head.XScale = data.XScale;
  head.YScale = data.YScale;
  set_limits(head, data, reading);
  return head;
}

std::string comment_of(const SheetRow& row) {
  std::string comment = row.text(sheet_column::comment);
  constexpr const char* names[] = {"", "Data X", "Data Y", "# Fail", "# Susp"};
  for (int column = sheet_column::x; column <= sheet_column::susps; ++column)
    if (const std::string& text = row.text(column); !text.empty())
      comment +=
          (comment.empty() ? "" : "; ") + std::string(names[column]) + " was \"" + text + "\"";
  return comment;
}

void write_rows(ProjectWriter& file, const DataSet& data, const DataReading& reading) {
  file.count(point_fields);
  const Point summary = summary_of(data, reading);
  visit_point(file, summary);
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const Point point = point_of(data.rows[i], i, reading);
    visit_point(file, point);
  }
  file.text({});
  for (std::size_t i = 0; i < data.rows.size(); ++i) file.text(comment_of(data.rows[i]));
}

/// Rows that can't be ranked are left for the person to read.
void read_as_written(DataSet& data, RankKind ranks, bool changed) {
  if (changed) mark_changed(data);
  try {
    DataReading reading(data.rows, ranks, data.own_ranks, data.ModeNames.bound());
    data.reading = std::move(reading);
  } catch (const RunTimeError&) {
    data.reading = no_rows(ranks);
    if (!changed) mark_changed(data);
  }
}

}  // namespace

bool RW_Data(ProjectReader& file, DataSet& data, RankKind unstated) {
  const ProjectText::AtWork at_work(file, data_place);
  Head head;
  file.text(data.Title);
  visit_head(file, head);
  data.Flag2 = head.Flag2;
  data.Reserved = head.Reserved;
  data.UniqueId = head.UniqueId;
  data.XScale = head.XScale;
  data.YScale = head.YScale;
  visit_mode_names(file, data.ModeNames, head.nModes);
  const auto ranks = read_rows(file, data, head);
  visit_lists(file, data, head.nInspection, head.nProfiles);
  read_as_written(data, ranks.value_or(unstated), head.Changed != 0);
  return ranks.has_value();
}

void RW_Data(ProjectWriter& file, const DataSet& data, bool fits_current, Ranking ranking) {
  const ProjectText::AtWork at_work(file, data_place);
  const DataReading reading = reading_of(data, ranking);
  const Head head = head_of(data, fits_current, reading);
  file.text(data.Title);
  visit_head(file, head);
  visit_mode_names(file, data.ModeNames, head.nModes);
  write_rows(file, data, reading);
  visit_lists(file, data, head.nInspection, head.nProfiles);
}

}  // namespace tavlo
