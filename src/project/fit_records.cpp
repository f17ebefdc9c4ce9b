#include "project/fit_records.h"

#include <algorithm>

namespace tavlo {
namespace {

SampleRow row_of(const DataPoint& point, int modes) {
  const bool has_mode = point.Mode >= 1 && point.Mode <= modes;
  return {point.X, point.Fails, point.Susps, has_mode ? point.Mode : std::int16_t{0}};
}

bool has_own_ranks(const DataSet& data) {
  return (data.Points(0).Order & rank_state::untouchable) != 0;
}

void keep_own_ranks(const DataSet& data, Sample& sample) {
  for (std::size_t i = 0; i < sample.size(); ++i) sample.rank[i] = data.Points(sample.entry[i]).Y;
}

}  // namespace

Sample sample_of(const DataSet& data, RankKind ranks) {
  if (data.Count > data.Points.bound()) throw RunTimeError(run_time::subscript);
  std::vector<SampleRow> rows;
  rows.reserve(static_cast<std::size_t>(std::max(data.Count, 0)));
  for (int i = 1; i <= data.Count; ++i) rows.push_back(row_of(data.Points(i), data.nModes));
  Sample sample = make_sample(rows, ranks, std::max(data.nModes, 0));
  if (has_own_ranks(data)) keep_own_ranks(data, sample);
  return sample;
}

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

Life life_of(const FitResult& fit) {
  const int last = std::min(fit.nRows, fit.Rows.bound());
  Life life{fit.ModelCode, {}};
  for (int i = 1; i <= last; ++i) life.rows.push_back(fit.Rows(i));
  return life;
}

bool is_current(const FitResult& fit, const DataSet& data) {
  return fit.Status == FitStatus::calculated && fit.revision == data.revision;
}

bool has_censored_choice(int model_code, int method_code) {
  const Model* model = find_model(model_code);
  return model && model->routine == FitRoutine::mixture && method_code == method_code::mle;
}

std::string short_label(const FitRequest& request) {
  const bool censored = request.censored && has_censored_choice(request.model, request.method);
  return fs_ModelNames(request.model, request.method).short_name + (censored ? "c" : "");
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
  const bool has_name = mode >= 1 && mode <= data.nModes && mode <= data.ModeNames.bound();
  return has_name ? data.ModeNames(mode) : std::to_string(mode);
}

}  // namespace tavlo
