// Sample: times to failure and suspensions as a fit reads them, made once from plain
// arrays and never changed: in ascending order, ranked, and in an inner unit of time (a
// power of two near the sample's own scale), so that no fit depends on the person's unit.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tavlo {

/// How plotting positions are made without suspensions. With any, adjusted ranks are.
enum class RankKind : std::int8_t { benard, exact };

/// One row as entered; a count may be a fraction, and is a weight.
struct SampleRow {
  float time = 0;
  double failures = 0;
  double suspensions = 0;
  std::int16_t mode = 0;   ///< failure mode from 1; 0 is none
  std::int32_t group = 0;  ///< of a table that holds many data sets, from 0
};

struct Sample {
  // All arrays have one entry a row, rows in ascending order of time; at one time
  // failures stand ahead of suspensions.
  std::vector<double> time;     ///< in inner units: x 2^-exponent
  std::vector<double> ln_time;  ///< ln |time|, inner units; -infinity at time 0
  std::vector<double> failures;
  std::vector<double> suspensions;
  /// Cumulative fraction failed; 0 on a row without failures, but where less than one unit
  /// in all is suspended: that of the failures before it.
  std::vector<float> rank;
  std::vector<std::int16_t> mode;  ///< empty where no row has a mode
  /// Weibull ordinate of the rank within its mode, as `mode`; infinite where that rank is
  /// no probability.
  std::vector<double> mode_ordinate;
  std::vector<std::int32_t> entry;  ///< number of the row as entered, from 1

  int exponent = 0;  ///< a person's time is an inner time x 2^exponent
  int modes = 0;     ///< number of failure modes
  RankKind ranks = RankKind::benard;
  double total_failures = 0;
  double total_suspensions = 0;

  std::size_t size() const { return time.size(); }
};

/// Sorts, ranks and scales the rows. `modes` is the number of failure modes (rows may
/// name 1 to modes). Times and counts must be finite and counts not below 0: error 5
/// otherwise. A time of 0 or below is kept: the models on a logarithmic axis refuse it.
Sample make_sample(std::span<const SampleRow> rows, RankKind ranks, int modes = 0);

/// An inner time in the person's unit.
double outer_time(const Sample& sample, double inner);

}  // namespace tavlo
