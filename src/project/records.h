// The records of a project: data sets with their rows, and fit sets with the
// fits of one data set. Windows only show them; the project's arrays own them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fit/answer.h"
#include "life/life.h"
#include "numerics/slots.h"
#include "project/data_reading.h"
#include "project/shared_rows.h"
#include "project/sheet_row.h"

namespace tavlo {

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

/// What a person types into one sheet, and what was read of it.
struct DataSet {
  std::int32_t UniqueId = 0;
  std::string Title = "Data 0";
  SharedRows<SheetRow> rows;     ///< in order of entry; row 1 of the sheet is the first
  Slots<std::string> ModeNames;  ///< failure mode 1 and on
  bool own_ranks = false;        ///< the rows keep the ranks that they came with

  std::int64_t revision = 0;  ///< goes up with each change of the rows; no file keeps it
  std::int64_t read_revision = 0;
  DataReading reading;  ///< of the rows at `read_revision`

  std::int16_t XScale = 2;
  std::int16_t YScale = 32;
  // Held and saved.
  bool Flag2 = false;
  double Reserved = 0;
  std::int16_t SummarySpare = 0;
  std::int16_t SummaryMode = 0;
  std::int32_t SummaryState = 0;  ///< of the ranks, where it says more than this program would
  Slots<InspectionList> Inspection;
  Slots<WarrantyProfile> Profiles;

  /// True when the rows are as they were read.
  bool is_read() const { return revision == read_revision; }
  const Sample& sample() const { return reading.sample(); }

  friend bool operator==(const DataSet&, const DataSet&) = default;
};

/// Whether two sets are the same in a file, however often they were changed until then: their
/// rows, how these are ranked, and whether they are to be read again.
bool same_content(const DataSet& a, const DataSet& b);

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
  std::int64_t revision = 0;           ///< of the data that it was made from
  std::int64_t refused_revision = -1;  ///< of data that it can't be made from, once they were tried
  std::vector<Note> notes;
  std::optional<Proof> proof;          ///< of a searched fit
  std::optional<StartsReport> starts;  ///< of a searched fit
  std::vector<ModeFit> modes;          ///< of a fit by failure mode: row i belongs to entry i - 1
  /// The life as it was given, as that of a sample: the data were not asked, and it answers no
  /// request. In a file its quality of 0 says so.
  bool is_given = false;

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
