#include "fit/sample.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "fit/ranks/mode_ranks.h"
#include "fit/ranks/plotting_positions.h"
#include "fit/ranks/tie_order.h"
#include "numerics/infinity.h"
#include "numerics/pack_math.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

bool is_sound(const SampleRow& row) {
  return std::isfinite(row.time) && std::isfinite(row.failures) && row.failures >= 0 &&
         std::isfinite(row.suspensions) && row.suspensions >= 0;
}

/// A whole number that is in the order of the times; of equal ones in that of the entries.
/// A million such numbers are sorted several times faster than rows by way of their places.
std::uint64_t sort_key(float time, std::size_t entry) {
  constexpr std::uint32_t sign = 0x80000000;
  const auto bits = std::bit_cast<std::uint32_t>(time + 0.0F);  // a zero without its sign
  const std::uint32_t ascending = (bits & sign) != 0 ? ~bits : bits | sign;
  return std::uint64_t{ascending} << 32 | entry;
}

void sort_by_time(std::span<const SampleRow> rows, std::vector<std::int32_t>& entry) {
  std::vector<std::uint64_t> keys(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) keys[i] = sort_key(rows[i].time, i + 1);
  std::sort(keys.begin(), keys.end());
  for (std::size_t i = 0; i < keys.size(); ++i)
    entry[i] = static_cast<std::int32_t>(keys[i] & 0xFFFFFFFF);
}

/// Entry numbers in ascending order of time, ties as ranking wants them.
std::vector<std::int32_t> order_of(std::span<const SampleRow> rows) {
  const auto time = [rows](std::int32_t entry) {
    return rows[static_cast<std::size_t>(entry) - 1].time;
  };
  std::vector<std::int32_t> entry(rows.size());
  std::iota(entry.begin(), entry.end(), 1);
  const auto earlier = [&](std::int32_t a, std::int32_t b) { return time(a) < time(b); };
  if (!std::is_sorted(entry.begin(), entry.end(), earlier)) sort_by_time(rows, entry);
  for (auto first = entry.begin(); first != entry.end();) {
    auto last = first + 1;
    while (last != entry.end() && time(*last) == time(*first)) ++last;
    if (last - first > 1) order_tied_rows(rows, std::span(first, last));
    first = last;
  }
  return entry;
}

/// The power of two next to the last failure, or to the largest time where that is 0.
int exponent_of(const Sample& sample) {
  double scale = sample.time.empty() ? 0 : sample.time.back();
  for (std::size_t i = sample.size(); i-- > 0;) {
    if (!(sample.failures[i] > 0)) continue;
    scale = sample.time[i];
    break;
  }
  if (scale == 0)
    for (const double time : sample.time) scale = std::max(scale, std::fabs(time));
  return scale == 0 ? 0 : std::ilogb(scale);
}

void fill(Sample& sample, std::span<const SampleRow> rows) {
  const bool has_modes =
      std::any_of(rows.begin(), rows.end(), [](const SampleRow& row) { return row.mode != 0; });
  sample.time.reserve(rows.size());
  sample.failures.reserve(rows.size());
  sample.suspensions.reserve(rows.size());
  if (has_modes) sample.mode.reserve(rows.size());
  for (const std::int32_t entry : sample.entry) {
    const SampleRow& row = rows[static_cast<std::size_t>(entry) - 1];
    sample.time.push_back(static_cast<double>(row.time));
    sample.failures.push_back(row.failures);
    sample.suspensions.push_back(row.suspensions);
    if (has_modes) sample.mode.push_back(row.mode);
    sample.total_failures += row.failures;
    sample.total_suspensions += row.suspensions;
  }
  finite(sample.total_failures + sample.total_suspensions);
}

/// Times are floats, so the power of two is a plain double and the product exact.
void take_inner_unit(Sample& sample) {
  sample.exponent = exponent_of(sample);
  const double unit = std::ldexp(1.0, -sample.exponent);
  for (double& time : sample.time) time *= unit;
}

void take_logarithms(Sample& sample) {
  const std::size_t rows = sample.size();
  sample.ln_time.resize(rows);
  std::size_t i = 0;
  for (; i + Pack::lanes <= rows; i += Pack::lanes) {
    const Pack time = abs(Pack::load(&sample.time[i]));
    select(time > Pack(0.0), ln(time), -infinity).store(&sample.ln_time[i]);
  }
  double rest[Pack::lanes] = {1, 1, 1, 1};
  std::copy(sample.time.begin() + static_cast<std::ptrdiff_t>(i), sample.time.end(), rest);
  const Pack time = abs(Pack::load(rest));
  select(time > Pack(0.0), ln(time), -infinity).store(rest);
  std::copy_n(rest, rows - i, sample.ln_time.begin() + static_cast<std::ptrdiff_t>(i));
}

}  // namespace

Sample make_sample(std::span<const SampleRow> rows, RankKind ranks, int modes) {
  if (!std::all_of(rows.begin(), rows.end(), is_sound))
    throw RunTimeError(run_time::invalid_argument);
  Sample sample;
  sample.ranks = ranks;
  sample.modes = modes;
  sample.entry = order_of(rows);
  fill(sample, rows);
  take_inner_unit(sample);
  take_logarithms(sample);
  rank_rows(sample);
  rank_failure_modes(sample);
  return sample;
}

double outer_time(const Sample& sample, double inner) { return std::ldexp(inner, sample.exponent); }

}  // namespace tavlo
