#include "project/ranking.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "numerics/number_text.h"
#include "numerics/real.h"
#include "project/fit_records.h"

namespace tavlo {
namespace {

/// Adds "Row n: ..." for the first row that has the fault.
template <class HasFault, class Words>
void add_first(ErrorReporter& reporter, const DataSet& data, HasFault has_fault, Words words) {
  const int last = std::min(data.Count, data.Points.bound());
  for (int i = 1; i <= last; ++i) {
    const DataPoint& row = data.Points(i);
    if (!has_fault(row)) continue;
    reporter.add_lines(
        {"Row " + std::to_string(row.Order > 0 ? row.Order : i) + ": " + words(row)});
    return;
  }
}

bool is_count(double number) { return std::isfinite(number) && number >= 0; }

void add_count_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data,
      [](const DataPoint& row) { return !is_count(row.Fails) || !is_count(row.Susps); },
      [](const DataPoint& row) {
        return number_text(is_count(row.Fails) ? row.Susps : row.Fails) + " is no number of units.";
      });
}

/// Puts the rows in the order of the sample. Most sets stand in it already.
void order_rows(const Sample& sample, DataSet& data) {
  if (std::is_sorted(sample.entry.begin(), sample.entry.end())) return;
  std::vector<DataPoint> ordered;
  ordered.reserve(sample.size());
  for (const std::int32_t from : sample.entry) ordered.push_back(std::move(data.Points(from)));
  std::move(ordered.begin(), ordered.end(), data.Points.begin() + 1);
}

void write_extent(DataSet& data) {
  const auto first = data.Points.begin() + 1;
  const auto last = first + data.Count;
  const auto has_failures = [](const DataPoint& row) { return row.Fails > 0; };
  const auto lowest = std::find_if(first, last, has_failures);
  if (lowest == last) return;
  const auto highest = std::find_if(std::make_reverse_iterator(last),
                                    std::make_reverse_iterator(first), has_failures);
  data.XMin = static_cast<double>(lowest->X);
  data.YMin = static_cast<double>(lowest->Y);
  data.XMax = static_cast<double>(highest->X);
  data.YMax = static_cast<double>(highest->Y);
}

void write_rows(const Sample& sample, DataSet& data) {
  const bool has_modes = !sample.mode_ordinate.empty();
  for (std::size_t i = 0; i < sample.size(); ++i) {
    DataPoint& row = data.Points(static_cast<int>(i) + 1);
    row.Y = sample.rank[i];
    row.XT[2] = row.X == 0.0F ? 0.0 : std::log(std::fabs(static_cast<double>(row.X)));
    row.YT[2] = has_modes ? sample.mode_ordinate[i] : 0.0;
  }
}

/// The bit of the other kind goes, as the ranks are of one kind only.
void write_summary(const Sample& sample, DataSet& data) {
  DataPoint& summary = data.Points(0);
  const bool benard = sample.ranks == RankKind::benard;
  summary.Order &= ~(rank_state::with_benard | rank_state::without_benard);
  summary.Order |= benard ? rank_state::with_benard : rank_state::without_benard;
  summary.Fails = sample.total_failures;
  summary.Susps = sample.total_suspensions;
  data.ranks = sample.ranks;
}

void require_logarithms(const DataSet& data) {
  for (int i = 1; i <= data.Count; ++i) ln(abs(Real(static_cast<double>(data.Points(i).X))));
}

void rank_set(DataSet& data, RankKind ranks) {
  const Sample sample = sample_of(data, ranks);
  order_rows(sample, data);
  write_summary(sample, data);
  write_rows(sample, data);
  write_extent(data);
  require_logarithms(data);
}

}  // namespace

void add_zero_time_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data, [](const DataPoint& row) { return row.X == 0.0F; },
      [](const DataPoint&) {
        return std::string("Data X is 0, and a time of 0 has no place on a logarithmic axis.");
      });
}

void Make_Ranks(ErrorReporter& reporter, bool benard, DataSet& data) {
  const auto words = [&data](ErrorReporter& to) {
    to.add_lines({"Median Rank Error: "});
    add_count_line(to, data);
    add_zero_time_line(to, data);
    to.add_lines({"Make_Ranks routine:"});
  };
  guarded(reporter, words, [&] {
    if ((data.Points(0).Order & rank_state::untouchable) != 0) return;
    rank_set(data, benard ? RankKind::benard : RankKind::exact);
  });
}

}  // namespace tavlo
