#include "actions/analysis_row.h"

#include <algorithm>
#include <array>
#include <optional>

#include "actions/shown_fits.h"
#include "actions/work.h"
#include "analyses/comparison.h"
#include "guidance/library.h"
#include "life/shown_parameters.h"
#include "numerics/date_text.h"
#include "numerics/elementary.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

enum Role : std::size_t { infant, chance, wearout };
using Populations = std::array<const FitParam*, 3>;  ///< by role; null for none

Populations by_role(const Life& life) {
  Populations roles{};
  std::vector<const FitParam*> rows;
  for (const FitParam& row : life.rows)
    if (!is_unreached(row)) rows.push_back(&row);
  std::stable_sort(rows.begin(), rows.end(),
                   [](const FitParam* a, const FitParam* b) { return a->Shape < b->Shape; });
  const bool are_three = rows.size() == 3;
  if (rows.size() > 1 && (are_three || rows.front()->Shape < 1)) {
    roles[infant] = rows.front();
    rows.erase(rows.begin());
  }
  if (life.rows.size() > 1 && !rows.empty() && (are_three || rows.back()->Shape > 1)) {
    roles[wearout] = rows.back();
    rows.pop_back();
  }
  if (!rows.empty()) roles[chance] = rows.back();
  return roles;
}

std::optional<double> pve_of(const FitResult& fit, const Sample& sample) {
  ComparedFit compared{fit.request, fit.Quality};
  compared.request.model = fit.ModelCode;
  compared.request.method = fit.Method;
  const Comparison found = compare(sample, {&compared, 1});
  const auto& straightness = found.rows.front().straightness;
  return straightness ? std::optional(straightness->pve) : std::nullopt;
}

/// Answers for each source.
class Analysis {
 public:
  Analysis(Session& session, int fit_index)
      : session_(session),
        chart_(chart_of_set(session, fit_index)),
        fits_(session.project.fits(fit_index)),
        data_(session.project.data(data_of_fits(session.project, fit_index))) {
    if (fits_.nFits == 0)
      remark_ = "There is no fit: calculate one first.";
    else if (const FitResult& last = fits_.Fits(fits_.nFits);
             is_current(last, data_) && !is_out_of_date(last, data_))
      take(last);
    else
      remark_ = "The last fit is out of date: calculate it first.";
  }

  const std::string& remark() const { return remark_; }

  std::string value(AnalysisSource source) const {
    if (source <= AnalysisSource::date) return of_work(source);
    if (source == AnalysisSource::units) return title(chart_item::x_title);
    if (!fit_) return {};
    if (source >= AnalysisSource::units_tested) return of_counts(source);
    if (source >= AnalysisSource::infant_typical) return of_life(source);
    return of_fit(source);
  }

 private:
  void take(const FitResult& fit) {
    model_ = find_model(fit.ModelCode);
    method_ = find_method(fit.Method);
    if (!model_ || !method_) return;
    fit_ = &fit;
    life_ = life_of(fit);
    populations_ = by_role(life_);
    if (life_.rows.size() > 3 || !fit.modes.empty()) {
      populations_ = {};
      remark_ = "A fit by failure mode has a life for each mode: their numbers are left out.";
    }
  }

  std::string shown(std::optional<double> number) const {
    if (!number) return {};
    return number_text(fd_Round(session_.errors, *number, session_.settings.DigitsFit).value);
  }

  std::string title(int item) const {
    return chart_ == 0 ? "" : session_.project.charts(chart_).Boxes(item).Text2;
  }

  std::string of_work(AnalysisSource source) const {
    const SplitPath path = split_path(present_work(session_).path);
    switch (source) {
      case AnalysisSource::path: return path.folder;
      case AnalysisSource::file_name: return path.name;
      case AnalysisSource::path_and_name:
        return path.folder.empty() ? path.name : path.folder + "/" + path.name;
      case AnalysisSource::chart_title: return title(chart_item::main_title);
      case AnalysisSource::chart_sub_title: return title(chart_item::sub_title);
      default: return format_date(session_.ports.clock.now(), "yyyy-mm-dd");
    }
  }

  std::string of_fit(AnalysisSource source) const {
    switch (source) {
      case AnalysisSource::model:
        return *model_->command_name ? model_->command_name : model_->short_name;
      case AnalysisSource::method: return method_->short_suffix + 1;
      case AnalysisSource::quality: return has_quality() ? shown(fit_->Quality) : std::string();
      case AnalysisSource::pve: {
        const auto pve = has_quality() ? pve_of(*fit_, data_.sample()) : std::nullopt;
        return pve ? format_number(*pve, "00.00%") : std::string();
      }
      case AnalysisSource::share: return shares();
      default: return {};
    }
  }

  bool has_quality() const { return fit_->modes.empty() && !fit_->is_given; }

  /// In the order of the slopes, as the values of the populations.
  std::string shares() const {
    if (!model_->has_shares()) return {};
    std::string text;
    for (const FitParam* const row : populations_)
      if (row && row->Fraction > 0) text += (text.empty() ? "" : "; ") + shown(row->Fraction);
    return text;
  }

  std::string of_life(AnalysisSource source) const {
    switch (source) {
      case AnalysisSource::infant_typical: return typical(infant);
      case AnalysisSource::chance_typical_range:
      case AnalysisSource::chance_typical: return typical(chance);
      case AnalysisSource::wearout_typical: return typical(wearout);
      case AnalysisSource::minimum_range:
      case AnalysisSource::minimum: return minimum_life();
      case AnalysisSource::infant_variation: return variation(infant);
      case AnalysisSource::chance_variation_range:
      case AnalysisSource::chance_variation: return variation(chance);
      case AnalysisSource::wearout_variation: return variation(wearout);
      default: return {};
    }
  }

  std::string typical(Role role) const {
    const FitParam* const row = populations_[role];
    return row ? shown(shown_parameters(life_.model, *row).first) : std::string();
  }

  std::string variation(Role role) const {
    const FitParam* const row = populations_[role];
    return row ? shown(shown_parameters(life_.model, *row).second) : std::string();
  }

  std::string minimum_life() const {
    const FitParam* const row = populations_[chance];
    return row && row->T0 != 0 ? shown(row->T0) : std::string();
  }

  std::string of_counts(AnalysisSource source) const {
    const Sample& sample = data_.sample();
    const std::string n = number_text(sample.total_failures + sample.total_suspensions);
    const std::string o = number_text(sample.total_failures);
    const std::string s = number_text(sample.total_suspensions);
    switch (source) {
      case AnalysisSource::units_tested: return n;
      case AnalysisSource::failures: return o;
      case AnalysisSource::suspensions: return s;
      case AnalysisSource::tested_and_suspended: return n + "/" + s;
      default: return o + "/" + s;
    }
  }

  Session& session_;
  int chart_;
  const FitSet& fits_;
  const DataSet& data_;
  const FitResult* fit_ = nullptr;  ///< null where there is none to be taken
  const Model* model_ = nullptr;
  const Method* method_ = nullptr;
  Life life_;
  Populations populations_{};
  std::string remark_;
};

std::optional<AnalysisSource> source_of(const std::string& name) {
  const auto names = analysis_sources();
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  return static_cast<AnalysisSource>(found - names.begin());
}

}  // namespace

AnalysisRow analysis_row(Session& session, int fit_index, std::span<const LibraryColumn> columns) {
  const Analysis analysis(session, fit_index);
  AnalysisRow row{{}, analysis.remark()};
  for (const LibraryColumn& column : columns) {
    std::string& field = row.fields.emplace_back();
    if (column.Kind != ColumnKind::from_analysis) continue;
    for (const std::string& item : column.Items) {
      const auto source = source_of(item);
      if (!source || is_heading(*source)) continue;
      const std::string value = analysis.value(*source);
      if (!value.empty()) field += (field.empty() ? "" : "; ") + value;
    }
  }
  return row;
}

}  // namespace tavlo
