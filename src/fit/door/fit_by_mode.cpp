#include "fit/door/fit_by_mode.h"

#include "fit/door/classical_fits.h"

namespace tavlo {
namespace {

/// Of a mode: the distinct times of its failures, and how many these are.
struct ModeCount {
  int times = 0;
  double failures = 0;
};

ModeCount count_of(const Sample& sample, int mode) {
  ModeCount count;
  double last = 0;
  for (std::size_t i = 0; i < sample.mode.size(); ++i) {
    if (sample.mode[i] != mode || !(sample.failures[i] > 0)) continue;
    if (count.failures == 0 || sample.time[i] != last) ++count.times;
    last = sample.time[i];
    count.failures += sample.failures[i];
  }
  return count;
}

class ModeByMode {
 public:
  ModeByMode(const Sample& sample, std::int16_t method) : sample_(sample), method_(method) {
    fit_.life.model = model_code::by_failure_mode;
  }

  FitAnswer run() {
    for (int mode = 1; mode <= sample_.modes; ++mode) add(mode);
    if (!any_) return {Refusal{RefusalCode::no_mode_fitted, {}}, std::move(notes_)};
    if (!left_out_.empty()) note(NoteCode::modes_left_out, left_out_);
    return {std::move(fit_), std::move(notes_)};
  }

 private:
  void add(int mode) {
    const ModeCount count = count_of(sample_, mode);
    ModeFit of_mode;
    of_mode.mode = mode;
    of_mode.method = count.times == 1 ? method_code::mle : method_;
    FitParam row;
    const auto answer = fitted(of_mode, count, row);
    if (answer) {
      of_mode.refusal = answer;
      note_refusal(mode, *answer);
      if (count.failures > 0) left_out_.push_back(mode);
    } else {
      any_ = true;
      fit_.quality = of_mode.quality.value_or(0);
      if (of_mode.method != method_)
        note(NoteCode::likelihood_for_one_mode, {static_cast<double>(mode), count.failures});
    }
    fit_.life.rows.push_back(row);
    fit_.modes.push_back(of_mode);
  }

  /// Fills row and quality, or says why not.
  std::optional<Refusal> fitted(ModeFit& of_mode, const ModeCount& count, FitParam& row) const {
    if (count.times == 0) return Refusal{RefusalCode::no_failure, {}};
    const RowAnswer answer = fit_weibull(sample_, of_mode.method, std::nullopt, of_mode.mode);
    if (const auto* refusal = std::get_if<Refusal>(&answer))
      return in_words_of_times(*refusal, count);
    const RowFit& inner = std::get<RowFit>(answer);
    const auto outer = outer_row(model_code::by_failure_mode, inner.row, sample_.exponent);
    if (const auto* refusal = std::get_if<Refusal>(&outer)) return *refusal;
    row = std::get<FitParam>(outer);
    of_mode.quality =
        of_mode.method == method_code::mle
            ? ln_likelihood_in_outer_unit(inner.quality, count.failures, sample_.exponent)
            : inner.quality;
    return std::nullopt;
  }

  /// One time of failures that no unit outlives is too little for a line and a likelihood.
  static Refusal in_words_of_times(const Refusal& refusal, const ModeCount& count) {
    if (count.times != 1 || refusal.code != RefusalCode::slope_without_limit) return refusal;
    if (count.failures < 2) return {RefusalCode::too_few_failures, {count.failures, 2}};
    return {RefusalCode::no_spread, {1, 2}};
  }

  void note_refusal(int mode, const Refusal& refusal) {
    std::vector<double> values = {static_cast<double>(mode), static_cast<double>(refusal.code)};
    values.insert(values.end(), refusal.values.begin(), refusal.values.end());
    note(NoteCode::mode_not_fitted, std::move(values));
  }

  void note(NoteCode code, std::vector<double> values) {
    notes_.push_back({code, 0, std::move(values)});
  }

  const Sample& sample_;
  std::int16_t method_;
  Fit fit_;
  std::vector<Note> notes_;
  std::vector<double> left_out_;  ///< modes with failures and without a fit
  bool any_ = false;
};

}  // namespace

FitAnswer fit_by_mode(const Sample& sample, const FitRequest& request) {
  return ModeByMode(sample, request.method).run();
}

}  // namespace tavlo
