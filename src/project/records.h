// The records of a project: data sets with their points, and fit sets with the
// fits of one data set. Windows only show them; the project's arrays own them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fit/answer.h"
#include "life/life.h"
#include "numerics/slots.h"

namespace tavlo {

/// One row of a data set. Row 0 of a set is its summary: totals in `Fails` and
/// `Susps`, the rank state (see rank_state) in `Order`.
struct DataPoint {
  double Fails = 0;            ///< failures at X; may be a fraction
  double Susps = 0;            ///< suspensions at X; may be a fraction
  std::array<double, 3> XT{};  ///< 2: ln |X|; the others are kept for the project file
  std::array<double, 3> YT{};  ///< 2: Weibull ordinate of the rank within the mode; 0 without
  float X = 0;                 ///< time to failure or suspension
  float Y = 0;                 ///< cumulative fraction failed; 0 on a row without failures
  std::int32_t Order = 0;      ///< order number of the point as it was entered
  std::int16_t Mode = 0;       ///< index into DataSet::ModeNames; 0 is none
  std::int16_t Spare = 0;      ///< kept for the project file
  std::string Comment;

  friend bool operator==(const DataPoint&, const DataPoint&) = default;
};

/// Bits of row 0's `Order`.
namespace rank_state {
inline constexpr std::int32_t untouchable = 63;  ///< any of bits 0 to 5: leave the ranks alone
inline constexpr std::int32_t without_benard = 64;
inline constexpr std::int32_t with_benard = 128;
}  // namespace rank_state

/// Inspection or grouped data; held and saved.
struct InspectionList {
  Slots<float> Times;
  Slots<float> Counts;
  Slots<std::int16_t> Flags;
  std::int32_t Last = 0;  ///< upper bound of the three arrays

  friend bool operator==(const InspectionList&, const InspectionList&) = default;
};

/// A warranty profile; held and saved.
struct WarrantyProfile {
  std::vector<double> Table = {0.0};  ///< (Rows + 1) x (Cols + 1) values, row by row
  std::int32_t Spare = 0;
  std::int32_t Rows = 0;
  std::int32_t Cols = 0;
  std::int16_t Kind = 0;
  std::string Title = "Warranty Profile";

  friend bool operator==(const WarrantyProfile&, const WarrantyProfile&) = default;
};

struct DataSet {
  bool FitsCurrent = true;
  bool Flag2 = false;
  double Reserved = 0;
  double XMax = 0;  ///< X and Y of the last and of the first row with failures
  double XMin = 0;
  double YMax = 0;
  double YMin = 0;
  std::int32_t UniqueId = 0;
  std::int32_t Count = 0;  ///< number of points, the upper bound of `Points`
  std::int16_t Changed = 0;
  std::int32_t nModes = 0;
  std::int32_t nInspection = 0;
  std::int32_t nProfiles = 0;
  std::int16_t XScale = 2;
  std::int16_t YScale = 32;
  Slots<std::string> ModeNames;
  std::string Title = "Data 0";
  Slots<DataPoint> Points;
  Slots<InspectionList> Inspection;
  Slots<WarrantyProfile> Profiles;

  std::int64_t revision = 0;          ///< goes up with each change of the data; no file keeps it
  RankKind ranks = RankKind::benard;  ///< kind of the ranks in `Y`

  friend bool operator==(const DataSet&, const DataSet&) = default;
};

enum class FitStatus : std::int16_t { not_calculated = 0, calculated = 1, stale = 2 };

/// One model fitted by one method. Below the stored fields stands what the fit was made
/// from and what must be known beside its numbers; no file keeps that yet.
struct FitResult {
  double Quality = 0;  ///< r squared of a regression, ln of the likelihood for MLE
  std::int16_t ModelCode = 0;
  std::int16_t Method = 0;
  FitStatus Status = FitStatus::not_calculated;
  std::int32_t nRows = 0;  ///< upper bound of `Rows`
  std::string Label;
  Slots<FitParam> Rows;

  FitRequest request;
  std::int64_t revision = 0;  ///< of the data that it was made from
  std::vector<Note> notes;
  std::optional<Proof> proof;          ///< of a searched fit
  std::optional<StartsReport> starts;  ///< of a searched fit
  std::vector<ModeFit> modes;          ///< of a fit by failure mode: row i belongs to entry i - 1

  friend bool operator==(const FitResult&, const FitResult&) = default;
};

/// All the fits of one data set.
struct FitSet {
  std::int32_t UniqueId = 0;
  Slots<std::int32_t> DataIds;  ///< slot 1 names the data set
  std::int32_t nFits = 0;
  std::int32_t nDataIds = 0;
  Slots<FitResult> Fits;
  std::string Title = "Fit 0";

  friend bool operator==(const FitSet&, const FitSet&) = default;
};

/// The slot from 1 that holds the model's fit by the method; 0 when none does. By a
/// likelihood with the suspensions in it (`censored`) a mixture is another fit.
int find_slot(const FitSet& fits, int model_code, int method_code, bool censored = false);

/// Factory defaults; without an identity.
DataSet fuStandardData();
FitSet fuStandard_Fit();

}  // namespace tavlo
