#include "project/fit_records.h"

#include <algorithm>

#include "fit/ranks/median_ranks.h"
#include "numerics/rounding.h"

namespace tavlo {

FitResult record_of(const FitRequest& request, const Fit& fit, std::vector<Note> notes,
                    std::int64_t revision) {
  FitResult record;
  record.Quality = fit.quality;
  record.ModelCode = request.model;
  record.Method = request.method;
  record.Status = FitStatus::calculated;
  record.Label = full_label(request);
  for (const FitParam& row : fit.life.rows) record.Rows.push_back(row);
  record.nRows = record.Rows.bound();
  record.request = request;
  record.revision = revision;
  record.notes = std::move(notes);
  record.proof = fit.proof;
  record.starts = fit.starts;
  record.modes = fit.modes;
  return record;
}

FitResult given_record(const FitRequest& request, const Life& life, std::int64_t revision) {
  Fit given;
  given.life = life;
  FitResult record = record_of(request, given, {}, revision);
  record.Label = short_label(request);
  record.is_given = true;
  return record;
}

Life life_of(const FitResult& fit) {
  const int last = std::min(fit.nRows, fit.Rows.bound());
  Life life{fit.ModelCode, {}};
  for (int i = 1; i <= last; ++i) life.rows.push_back(fit.Rows(i));
  return life;
}

bool is_current(const FitResult& fit, const DataSet& data) {
  return fit.Status == FitStatus::calculated &&
         (fit.is_given || fit.revision == data.read_revision);
}

bool has_kinds_of_ranks(const DataSet& data) {
  const Sample& sample = data.sample();
  return !data.own_ranks && sample.total_suspensions < 1 &&
         round_half_even(sample.total_failures + sample.total_suspensions) <= largest_exact_count;
}

bool has_other_ranks(const FitResult& fit, const DataSet& data) {
  return fit.Method != method_code::mle && fit.request.ranks != data.reading.ranks() &&
         has_kinds_of_ranks(data);
}

bool is_out_of_date(const FitResult& fit, const DataSet& data) {
  if (fit.is_given) return !is_current(fit, data);
  return !is_current(fit, data) || !data.is_read() || has_other_ranks(fit, data);
}

bool wants_refit(const FitResult& fit, const DataSet& data) {
  return !fit.is_given && is_out_of_date(fit, data) && fit.refused_revision != data.read_revision;
}

std::string why_out_of_date(const FitResult& fit, const DataSet& data) {
  if (!is_out_of_date(fit, data)) return {};
  if (fit.Status == FitStatus::not_calculated) return "Not calculated yet.";
  return data.is_read() ? "Not calculated from the data as they are now."
                        : "The data, or how they are ranked, have changed since this fit was made.";
}

std::string short_label(const FitRequest& request) {
  const bool censored = request.censored && has_censored_choice(request.model, request.method);
  return fs_ModelNames(request.model, request.method).short_name + (censored ? "c" : "");
}

std::string label_of(const FitResult& fit) {
  FitRequest request = fit.request;
  request.model = fit.ModelCode;
  request.method = fit.Method;
  return short_label(request);
}

std::string full_label(const FitRequest& request) {
  const Model* model = find_model(request.model);
  const std::string size = model ? model->size_label : "";
  return short_label(request) + (size.empty() ? "" : " ") + size;
}

int find_slot(const FitSet& fits, const FitRequest& request) {
  return find_slot(fits, request.model, request.method, request.censored);
}

void mark_changed(DataSet& data) { ++data.revision; }

std::string mode_name(const DataSet& data, int mode) {
  const bool has_name = mode >= 1 && mode <= data.ModeNames.bound();
  return has_name ? data.ModeNames(mode) : std::to_string(mode);
}

}  // namespace tavlo
