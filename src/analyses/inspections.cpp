#include "analyses/inspections.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

/// The first inspection at or after a time; nothing behind the last.
std::optional<double> next_look(const Inspections& inspections, double time) {
  // A time that single precision has put beside a multiple is that multiple.
  constexpr double rounding = 0x1p-23;
  if (inspections.interval > 0)
    return std::max(1.0, std::ceil(time / inspections.interval * (1 - rounding))) *
           inspections.interval;
  const auto found =
      std::lower_bound(inspections.times.begin(), inspections.times.end(), time * (1 - rounding));
  return found == inspections.times.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

bool is_inspection(double time) { return time > 0 && std::isnormal(static_cast<float>(time)); }

Inspections inspections_of(std::vector<double> numbers) {
  if (!std::all_of(numbers.begin(), numbers.end(), is_inspection))
    throw RunTimeError(run_time::invalid_argument);
  if (numbers.size() == 1) return {numbers[0], {}};
  std::sort(numbers.begin(), numbers.end());
  return {0, std::move(numbers)};
}

void find_at(const Inspections& inspections, std::vector<SampleRow>& rows) {
  if (inspections.is_none()) return;
  for (SampleRow& row : rows) {
    const auto look = next_look(inspections, row.time);
    if (!look) {
      row.time = static_cast<float>(inspections.times.back());
      row.suspensions += std::exchange(row.failures, 0);
    } else if (row.failures > 0) {
      row.time = static_cast<float>(*look);
    }
    if (!std::isfinite(row.time)) throw RunTimeError(run_time::overflow);
  }
}

}  // namespace tavlo
