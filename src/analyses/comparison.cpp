#include "analyses/comparison.h"

#include <algorithm>
#include <cmath>

#include "analyses/chi_square.h"

namespace tavlo {

namespace {

constexpr std::int16_t base_code = model_code::weibull2;

bool has_routine_of_likelihood(const Model& model) {
  return std::ranges::find(model.contains, base_code) != model.contains.end();
}

/// Models richer than the base.
bool is_tested(const Model& model) {
  return model.routine == FitRoutine::lognormal3 ||
         (model.routine == FitRoutine::mixture && model.code != base_code);
}

/// The critical value of a model by regression; nothing where no table stands for it.
std::optional<CriticalRSquared> straightness(const Model& model, double failures,
                                             double r_squared) {
  constexpr int most_parameters = 3;
  const bool three = model.code == model_code::weibull3 || model.code == model_code::lognormal3;
  if (model.free_parameters > most_parameters || !(r_squared > 0 && r_squared < 1))
    return std::nullopt;
  const PaperKind kind =
      model.family == Family::lognormal ? PaperKind::lognormal : PaperKind::weibull;
  return fd_Ccc2(kind, failures, three, r_squared);
}

/// ln of what a chance lacks to 1 where x is so large that it reads 1: among such chances too
/// the greatest is to be found. The incomplete gamma function's asymptotic series.
double ln_missing(double x, int df) {
  const double a = 0.5 * df, y = 0.5 * x;
  return (a - 1) * std::log(y) - y - std::lgamma(a) + std::log1p((a - 1) / y * (1 + (a - 2) / y));
}

class FitComparison {
 public:
  FitComparison(const Sample& sample, std::span<const ComparedFit> fits)
      : sample_(sample), fits_(fits) {}

  Comparison run() {
    base_ = likelihood_of(*find_model(base_code));
    for (const ComparedFit& fit : fits_) add(fit);
    if (comparison_.winner) choose_winner();
    return std::move(comparison_);
  }

 private:
  void add(const ComparedFit& fit) {
    ComparedRow& row = comparison_.rows.emplace_back();
    const Model* const model = find_model(fit.request.model);
    if (!model || !fit.quality || !std::isfinite(*fit.quality)) return;
    if (fit.request.method == method_code::mle)
      judge_likelihood(fit, *model, row);
    else
      row.straightness = straightness(*model, sample_.total_failures, *fit.quality);
  }

  void judge_likelihood(const ComparedFit& fit, const Model& model, ComparedRow& row) {
    if (leaves_suspensions_out(sample_, fit.request)) {
      row.test = RatioTest::incommensurate;
      return;
    }
    add_criteria(model, *fit.quality, row);
    if (model.code == base_code) return add_base(row);
    if (model.fixed_slope > 0) row.test = RatioTest::contained;
    if (is_tested(model)) add_test(model, tested_likelihood(model, *fit.quality), row);
  }

  void add_criteria(const Model& model, double ln_likelihood, ComparedRow& row) const {
    const double units = sample_.total_failures + sample_.total_suspensions;
    if (model.family == Family::none || !(units > 0)) return;
    row.aic = 2.0 * model.free_parameters - 2.0 * ln_likelihood;
    row.bic = std::log(units) * model.free_parameters - 2.0 * ln_likelihood;
  }

  void add_base(ComparedRow& row) {
    row.test = RatioTest::base;
    if (!comparison_.winner) comparison_.winner = Winner{this_row(), 0, true};
  }

  void add_test(const Model& model, std::optional<double> ln_likelihood, ComparedRow& row) {
    if (!base_ || !ln_likelihood) return;
    const double x = 2.0 * (*ln_likelihood - *base_);
    row.test = RatioTest::tested;
    row.df = model.free_parameters - find_model(base_code)->free_parameters;
    row.chance = fd_ChiSq(x, static_cast<std::int16_t>(row.df));
    const double missing = row.chance == 1 ? ln_missing(x, row.df) : 0;
    if (row.chance < best_ || (row.chance == best_ && !(missing < missing_))) return;
    best_ = row.chance;
    missing_ = missing;
    best_row_ = this_row();
  }

  void choose_winner() {
    constexpr double enough = 0.5;
    comparison_.winner->significance = best_;
    if (best_ > enough) comparison_.winner = Winner{best_row_, best_, false};
  }

  std::size_t this_row() const { return comparison_.rows.size() - 1; }

  /// Of the model's last fit whose likelihood takes in what the base does.
  std::optional<double> likelihood_of(const Model& model) const {
    std::optional<double> found;
    for (const ComparedFit& fit : fits_)
      if (fit.request.model == model.code && fit.request.method == method_code::mle &&
          !leaves_suspensions_out(sample_, fit.request) && fit.quality)
        found = fit.quality;
    return found;
  }

  /// Its own, or that of the model in whose place it stands.
  std::optional<double> tested_likelihood(const Model& model, double own) const {
    if (has_routine_of_likelihood(model)) return own;
    const auto stands_for = [&](const Model& other) {
      return has_routine_of_likelihood(other) && other.free_parameters == model.free_parameters;
    };
    const auto other = std::ranges::find_if(models(), stands_for);
    return other == models().end() ? std::nullopt : likelihood_of(*other);
  }

  const Sample& sample_;
  std::span<const ComparedFit> fits_;
  std::optional<double> base_;  ///< ln L
  double best_ = 0;
  double missing_ = 0;  ///< ln of 1 - best_, where this reads 0
  std::size_t best_row_ = 0;
  Comparison comparison_;
};

}  // namespace

bool Comparison::has_tested_row() const {
  return std::ranges::any_of(rows,
                             [](const ComparedRow& row) { return row.test == RatioTest::tested; });
}

std::optional<std::size_t> Comparison::straightest() const {
  std::optional<std::size_t> best;
  std::size_t judged = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!rows[i].straightness) continue;
    ++judged;
    if (!best || rows[i].straightness->pve > rows[*best].straightness->pve) best = i;
  }
  return judged > 1 ? best : std::nullopt;
}

Comparison compare(const Sample& sample, std::span<const ComparedFit> fits) {
  return FitComparison(sample, fits).run();
}

}  // namespace tavlo
