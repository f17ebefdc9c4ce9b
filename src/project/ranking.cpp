#include "project/ranking.h"

#include <algorithm>
#include <cmath>

#include "numerics/number_text.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

/// Adds "Row n: ..." for the first row that has the fault.
template <class HasFault, class Words>
void add_first(ErrorReporter& reporter, const DataSet& data, HasFault has_fault, Words words) {
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const SheetRow& row = data.rows[i];
    if (!row.has_point() || !has_fault(row)) continue;
    reporter.add_lines({"Row " + std::to_string(i + 1) + ": " + words(row)});
    return;
  }
}

bool is_count(double number) { return std::isfinite(number) && number >= 0; }

void add_count_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data,
      [](const SheetRow& row) { return !is_count(row.failures) || !is_count(row.suspensions); },
      [](const SheetRow& row) {
        return number_text(is_count(row.failures) ? row.suspensions : row.failures) +
               " is no number of units.";
      });
}

void require_logarithms(const Sample& sample) {
  if (std::find(sample.time.begin(), sample.time.end(), 0.0) != sample.time.end())
    throw RunTimeError(run_time::invalid_argument);
}

}  // namespace

void add_zero_time_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data, [](const SheetRow& row) { return row.time == 0.0F; },
      [](const SheetRow&) {
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
    data.reading = DataReading(data.rows, benard ? RankKind::benard : RankKind::exact,
                               data.own_ranks, data.ModeNames.bound());
    data.read_revision = data.revision;
    require_logarithms(data.sample());
  });
}

}  // namespace tavlo
