#include "files/fit_section.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "fit/door/data_notes.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr ProjectText::Place fit_place = {"Data Read Write Error: ", "RW_Fit routine:"};

constexpr int field_count = 0;  // that is all the section says of its fields

// The bytes that an element takes at the least, when every value is one digit.
constexpr std::size_t least_id = 2;
constexpr std::size_t least_fit = 5;  // half of it: element 0 of these two is not in the file
constexpr std::size_t least_row = 5;
constexpr int most_fits = 32767;

template <class Archive, class Row>
void visit_row(Archive& file, Row& row) {
  file.values(row.Scale, row.Fraction);
  file.values(row.Shape);
  file.values(row.T0);
  file.values(row.Applies);
}

template <class Archive, class Result>
void visit_result(Archive& file, Result& fit, FitStatus& status) {
  auto state = static_cast<std::int16_t>(status);
  file.values(fit.Quality, fit.ModelCode, fit.Method, state, as_int(fit.nRows));
  file.require_bytes_for(fit.nRows, 1);  // at once, so that its own line is named
  status = static_cast<FitStatus>(state);
  file.text(fit.Label);
  file.make_room(fit.Rows, fit.nRows, fit.nRows > 0 ? least_row : 1, most_fits);
  for (int i = 1; i <= fit.nRows; ++i) visit_row(file, fit.Rows(i));
}

template <class Archive, class Records>
void visit_heads(Archive& file, Records& fits) {
  file.count(field_count);
  file.values(fits.UniqueId, as_int(fits.nFits), as_int(fits.nDataIds));
  for (const std::int32_t bound : {fits.nFits, fits.nDataIds}) file.require_bytes_for(bound, 1);
  file.text(fits.Title);
  file.make_room(fits.DataIds, fits.nDataIds, least_id, most_fits);
  for (int i = 0; i <= fits.nDataIds; ++i) file.values(fits.DataIds(i));
  file.make_room(fits.Fits, fits.nFits, fits.nFits > 0 ? least_fit : 1, most_fits);
}

/// False where the numbers can't be those of its model. Of a model that this version does
/// not know nothing can be said.
bool has_rows_of_model(const FitResult& fit) {
  const Model* model = find_model(fit.ModelCode);
  if (!model) return true;
  if (model->routine == FitRoutine::by_mode) return fit.nRows > 0;  // names may have come since
  return fit.nRows == model->rows();
}

void read_request(FitResult& fit, RankKind ranks) {
  const Model* model = find_model(fit.ModelCode);
  fit.request.model = fit.ModelCode;
  fit.request.method = fit.Method;
  fit.request.ranks = ranks;
  fit.request.censored = fit.Label.find("/MLEc") != std::string::npos;
  if (model && model->fixes_slope() && fit.nRows > 0) fit.request.slope = fit.Rows(1).Shape;
}

/// A row without a slope is that of a mode that could not be fitted.
void read_modes(FitResult& fit) {
  fit.modes.clear();
  for (int i = 1; i <= fit.nRows; ++i) {
    ModeFit mode{.mode = i, .method = fit.Method, .quality = {}, .refusal = {}};
    if (fit.Rows(i).Shape == 0) mode.refusal = Refusal{RefusalCode::no_failure, {}};
    fit.modes.push_back(mode);
  }
}

bool is_finite(const FitResult& fit) {
  return std::isfinite(fit.Quality) &&
         std::all_of(fit.Rows.begin() + 1, fit.Rows.end(), [](const FitParam& row) {
           return std::isfinite(row.Scale) && std::isfinite(row.Fraction) &&
                  std::isfinite(row.Shape) && std::isfinite(row.T0);
         });
}

FitResult without_numbers(FitResult fit) {
  fit.Quality = 0;
  fit.nRows = 0;
  fit.Rows = {};
  fit.modes.clear();
  return fit;
}

FitStatus status_of(const FitResult& fit, const DataSet& data) {
  if (fit.Status == FitStatus::not_calculated) return fit.Status;
  return is_out_of_date(fit, data) ? FitStatus::stale : FitStatus::calculated;
}

void write_result(ProjectWriter& file, const FitResult& fit, const DataSet& data) {
  FitStatus status = status_of(fit, data);
  if (is_finite(fit)) return visit_result(file, fit, status);
  status = FitStatus::not_calculated;
  const FitResult empty = without_numbers(fit);
  visit_result(file, empty, status);
}

}  // namespace

void RW_Fit(ProjectReader& file, FitSet& fits) {
  const ProjectText::AtWork at_work(file, fit_place);
  visit_heads(file, fits);
  for (int i = 1; i <= fits.nFits; ++i) visit_result(file, fits.Fits(i), fits.Fits(i).Status);
}

void tie_fits(FitSet& fits, const DataSet& data) {
  for (int i = 1; i <= fits.nFits; ++i) {
    FitResult& fit = fits.Fits(i);
    if (!has_rows_of_model(fit)) {
      fit = without_numbers(fit);
      fit.Status = FitStatus::not_calculated;
    }
    if (fit.Status != FitStatus::not_calculated && fit.Status != FitStatus::calculated)
      fit.Status = FitStatus::stale;
    read_request(fit, data.reading.ranks());
    const Model* model = find_model(fit.ModelCode);
    const bool is_by_mode = model && model->routine == FitRoutine::by_mode;
    if (is_by_mode) read_modes(fit);
    fit.is_given = fit.Quality == 0 && fit.nRows > 0 && !is_by_mode;
    // A set with changes since has no fit of its present rows; what was read before, has.
    fit.revision = data.read_revision;
    if (fit.Status == FitStatus::calculated && fit.nRows > 0 && !fit.is_given)
      fit.notes =
          data_notes(data.sample(), fit.request,
                     std::span<const FitParam>(fit.Rows.begin() + 1, fit.Rows.end()), fit.modes);
  }
}

void RW_Fit(ProjectWriter& file, const FitSet& fits, const DataSet& data) {
  const ProjectText::AtWork at_work(file, fit_place);
  visit_heads(file, fits);
  for (int i = 1; i <= fits.nFits; ++i) write_result(file, fits.Fits(i), data);
}

}  // namespace tavlo
