#include "actions/likelihood.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "actions/compensated_sum.h"
#include "life/models.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

const char* refusal_label(int code) {
  switch (code) {
    case model_code::weibull3: return "3.4: 3 Parameter Weibull (tzero)";
    case model_code::weibull_batch: return "3.5 3 Parameter Weibull(Batch)";
    case model_code::weibull4: return "3.6 4 Parameter Weibull";
    case model_code::weibull5c: return "3.7 5C Weibull (Competing Risk)";
    case model_code::weibull5x: return "3.8 5X Weibull (Exclusive OR)";
    case model_code::weibull7: return "3.9 7 Parameter Weibull";
    case model_code::normal: return "4.0 Normal Distribution";
    case model_code::lognormal: return "4.1 LogNormal";
    case model_code::lognormal3: return "4.2 3 Par LogNormal";
    case model_code::gumbel_lower: return "4.3 Gumbel Minus";
    case model_code::gumbel_upper: return "4.4 Gumbel Plus";
    case model_code::custom: return "4.5 Custom Distribution";
    case model_code::by_failure_mode: return "4.6: By Failure Mode";
    default: return nullptr;
  }
}

}  // namespace

WeibullLikelihood::WeibullLikelihood(const DataSet& data, bool one_mode) {
  if (data.Count > data.Points.bound()) throw RunTimeError(run_time::subscript);
  gather(data, one_mode);
}

// One walk over the wide records; the slopes are tried on the copy.
void WeibullLikelihood::gather(const DataSet& data, bool one_mode) {
  const DataPoint* rows = data.Points.data();
  double earliest_failure = infinity;
  double largest = -infinity;
  CompensatedSum failures;
  CompensatedSum failures_by_ln;
  times_.reserve(static_cast<std::size_t>(data.Count));
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& row = rows[i];
    const double ln_time = ln(abs(Real(static_cast<double>(row.X)))).value();
    const double weight = row.Fails + row.Susps;
    if (weight != 0) {
      times_.push_back({weight, ln_time});
      largest = std::max(largest, ln_time);
    }
    if (one_mode && row.Mode != rows[0].Mode) continue;
    if (row.Fails > 0) earliest_failure = std::min(earliest_failure, ln_time);
    failures += row.Fails;
    failures_by_ln += row.Fails * ln_time;
  }
  ln_largest_ = times_.empty() ? 0.0 : largest;
  for (WeightedTime& time : times_) time.ln_time -= ln_largest_;
  failures_ = finite(one_mode ? failures.value() : rows[0].Fails);
  failures_before_last_ = finite(failures_by_ln.value() - failures_ * ln_largest_);
  has_maximum_ = earliest_failure < ln_largest_;
}

WeibullLikelihood::Sums WeibullLikelihood::sums_at(double beta) const {
  CompensatedSum powers;
  CompensatedSum powers_by_ln;
  for (const WeightedTime& time : times_) {
    const double power = time.weight * std::exp(beta * time.ln_time);
    powers += power;
    powers_by_ln += power * time.ln_time;
  }
  return {finite(powers.value()), finite(powers_by_ln.value())};
}

// B / A - L1 / r - 1 / beta; the largest time drops out of the difference.
double WeibullLikelihood::score_of(double beta, const Sums& sums) const {
  return (Real(sums.powers_by_ln) / sums.powers - Real(failures_before_last_) / failures_ -
          1 / Real(beta))
      .value();
}

// With s^beta A = r, beta ln s is ln(r / A), and the largest time cancels in
// r beta ln s + (beta - 1) L1 but for one r ln Xmax.
LikelihoodValue WeibullLikelihood::at(double beta) const {
  const Sums sums = sums_at(beta);
  const Real r = failures_;
  const Real ln_ratio = ln(r / sums.powers);
  const Real log_likelihood =
      r * (ln_ratio + ln(Real(beta)) - ln_largest_ - 1) + (Real(beta) - 1) * failures_before_last_;
  const Real scale = exp(ln_ratio / beta - ln_largest_);
  return {log_likelihood.value(), score_of(beta, sums), scale.value(), beta};
}

LikelihoodValue WeibullLikelihood::at(double beta, double scale) const {
  const Sums sums = sums_at(beta);
  const Real r = failures_;
  const Real ln_scaled = ln(Real(scale)) + ln_largest_;  // ln(s Xmax)
  const Real log_likelihood = r * (Real(beta) * ln_scaled + ln(Real(beta)) - ln_largest_) +
                              (Real(beta) - 1) * failures_before_last_ -
                              exp(Real(beta) * ln_scaled) * sums.powers;
  return {log_likelihood.value(), score_of(beta, sums), scale, beta};
}

// beta ln(X1 / X2) is the root of (1 + y) exp(y) = -y, that is -1.278..., and
// the scale follows from s^beta (X1^beta + X2^beta) = 1.
std::optional<LikelihoodValue> one_failure_one_suspension(const DataSet& data, double failures) {
  if (data.Count != 2 || failures != 1) return std::nullopt;
  const DataPoint& failed = data.Points(1);
  const DataPoint& suspended = data.Points(2);
  const bool is_pair = failed.Fails == 1 && failed.Susps == 0 && suspended.Fails == 0 &&
                       suspended.Susps == 1 && suspended.X > failed.X;
  if (!is_pair) return std::nullopt;
  const Real ln_first = ln(abs(Real(static_cast<double>(failed.X))));
  const Real ln_second = ln(abs(Real(static_cast<double>(suspended.X))));
  const Real D = ln_first - ln_second;
  if (!(D < 0)) return std::nullopt;
  const Real beta = -1.27846454276108 / D;
  const Real ln_scale = D * 1.19215220577483 - ln_first;
  const Real survived = exp(beta * (ln_scale + ln_first)) + exp(beta * (ln_scale + ln_second));
  const Real log_likelihood = ln(beta) + beta * ln_scale + (beta - 1) * ln_first - survived;
  return LikelihoodValue{log_likelihood.value(), 0.0, exp(ln_scale).value(), beta.value()};
}

namespace {

LikelihoodValue evaluate(const DataSet& data, const FitParam& row, bool free_slope, bool solve,
                         bool one_mode) {
  const double beta = row.Shape > 0 ? row.Shape : 1.0;
  const WeibullLikelihood likelihood(data, one_mode);
  if (!solve && row.Scale > 0) return likelihood.at(beta, row.Scale);
  if (solve && free_slope)
    if (const auto closed = one_failure_one_suspension(data, likelihood.failures())) return *closed;
  return likelihood.at(beta);
}

}  // namespace

void Calc_Likelihood(Prompts& prompts, double& ln_likelihood, double& score, const DataSet& data,
                     FitResult& fit, bool solve, int mode_flag) {
  const Model* model = find_model(fit.ModelCode);
  if (!model || model->routine != FitRoutine::weibull) {
    if (const char* label = refusal_label(fit.ModelCode & model_mask))
      prompts.show({"", std::string(label) + " not programmed in Calc_Likelihood"});
    return;
  }
  const bool one_mode = mode_flag == one_failure_mode;
  FitParam& row = fit.Rows(one_mode ? data.Points(0).Mode : 1);
  const LikelihoodValue value = evaluate(data, row, !model->fixes_slope(), solve, one_mode);
  ln_likelihood = fit.Quality = value.ln_likelihood;
  score = value.score;
  if (!solve) return;
  row.Scale = value.scale;
  row.Shape = value.shape;
}

}  // namespace tavlo
