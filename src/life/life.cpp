#include "life/life.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <vector>

#include "numerics/infinity.h"
#include "numerics/normal.h"

namespace tavlo {
namespace {

/// `Applies` holds one bit for each population, 30 of them. The modes of a fit by failure
/// mode need none, and may be more.
constexpr std::size_t most_populations = 30;

/// What one row does at a time, as if it alone acted: logarithms, so that products and far
/// tails keep their digits. As it stands, nothing has failed.
struct Act {
  double ln_survival = 0;
  double ln_density = -infinity;
};

/// A time so far out that the parts of the logarithm are infinite has no density.
double density_or_none(double ln_density) {
  return std::isnan(ln_density) ? -infinity : ln_density;
}

Act weibull_act(const FitParam& row, double x) {
  const double d = x - row.T0;
  if (!(d > 0) || !(row.Scale > 0) || is_unreached(row)) return {};
  const double hazard = std::pow(d * row.Scale, row.Shape);
  const double ln_rate = row.Shape * std::log(d * row.Scale) + std::log(row.Shape) - std::log(d);
  return {-hazard, density_or_none(ln_rate - hazard)};
}

/// By the standard normal distribution; `ln_rate` is ln dz/dx.
Act normal_act(double z, double ln_rate) {
  const double tail = 0.5 * std::erfc(std::fabs(z) / std::numbers::sqrt2);
  const double ln_survival = z < 0 ? std::log1p(-tail) : std::log(tail);
  const double ln_root_of_2pi = 0.5 * std::log(2 * std::numbers::pi);
  return {ln_survival, density_or_none(-0.5 * z * z - ln_root_of_2pi + ln_rate)};
}

Act lognormal_act(const FitParam& row, double x) {
  const double d = x - row.T0;
  if (!(d > 0)) return {};
  return normal_act(std::log(d / row.Scale) * row.Shape, std::log(row.Shape) - std::log(d));
}

/// The smallest of many: F = 1 - exp(-exp z).
Act gumbel_lower_act(double z, double del) {
  const double hazard = std::exp(z);
  return {-hazard, density_or_none(z - hazard - std::log(del))};
}

/// The largest of many: F = exp(-exp(-z)).
Act gumbel_upper_act(double z, double del) {
  const double exponent = std::exp(-z);
  const double F = std::exp(-exponent);
  return {F < 0.5 ? std::log1p(-F) : std::log(-std::expm1(-exponent)),
          density_or_none(-z - exponent - std::log(del))};
}

Act gumbel_act(const Model& model, const FitParam& row, double x) {
  const double z = (x - 1 / row.Scale) / row.Shape;
  return model.code == model_code::gumbel_upper ? gumbel_upper_act(z, row.Shape)
                                                : gumbel_lower_act(z, row.Shape);
}

Act act_of(const Model& model, const FitParam& row, double x) {
  switch (model.family) {
    case Family::normal: return normal_act((x - row.Scale) * row.Shape, std::log(row.Shape));
    case Family::lognormal: return lognormal_act(row, x);
    case Family::gumbel: return gumbel_act(model, row, x);
    case Family::weibull: break;
    case Family::none:
      if (model.code != model_code::by_failure_mode) return {};
  }
  return weibull_act(row, x);
}

/// Calls visit(share, bits): a row acts in the term when its `Applies` has one of the bits.
/// The modes of a fit by failure mode all act on all units.
template <class Visit>
void for_each_term(const Life& life, Visit visit) {
  constexpr std::int32_t any = -1;
  if ((life.model & model_mask) == model_code::by_failure_mode) return visit(1.0, any);
  std::int32_t bit = 1;
  for (std::size_t i = 0; i < std::min(life.rows.size(), most_populations); ++i, bit *= 2)
    if (life.rows[i].Fraction > 0) visit(life.rows[i].Fraction, bit);
}

/// All rows of a life at one time.
class ActsAt {
 public:
  ActsAt(const Life& life, double x) : life_(life), rows_(life.rows.size()) {
    if (rows_ > few_.size()) {
      many_.resize(rows_);
      acts_ = many_.data();
    }
    const Model* model = find_model(life.model);
    for (std::size_t j = 0; model && j < rows_; ++j) acts_[j] = act_of(*model, life.rows[j], x);
  }

  ActsAt(const ActsAt&) = delete;
  ActsAt& operator=(const ActsAt&) = delete;

  static constexpr std::size_t nothing = std::numeric_limits<std::size_t>::max();

  /// ln R of the risks that act in a term; `but` leaves one of them out.
  double ln_survival(std::int32_t bits, std::size_t but = nothing) const {
    double sum = 0;
    for (std::size_t j = 0; j < rows_; ++j)
      if (j != but && acts(j, bits)) sum += acts_[j].ln_survival;
    return sum;
  }

  /// Calls visit(ln density) for each risk of a term, the others surviving.
  template <class Visit>
  void for_each_density(std::int32_t bits, Visit visit) const {
    for (std::size_t j = 0; j < rows_; ++j)
      if (acts(j, bits)) visit(acts_[j].ln_density + ln_survival(bits, j));
  }

 private:
  bool acts(std::size_t j, std::int32_t bits) const { return (life_.rows[j].Applies & bits) != 0; }

  const Life& life_;
  std::size_t rows_;
  std::array<Act, most_populations> few_{};
  std::vector<Act> many_;
  Act* acts_ = few_.data();
};

/// ln of a sum of numbers given by their logarithms.
class LogSum {
 public:
  void add(double ln_term) {
    if (ln_term == -infinity) return;
    if (ln_term > largest_) {
      sum_ = sum_ * std::exp(largest_ - ln_term) + 1;
      largest_ = ln_term;
    } else {
      sum_ += std::exp(ln_term - largest_);
    }
  }
  double value() const { return sum_ > 0 ? largest_ + std::log(sum_) : -infinity; }

 private:
  double largest_ = -infinity;
  double sum_ = 0;
};

/// The time by which the row alone has let p fail; not finite where there is none.
double row_quantile(const Model& model, const FitParam& row, double p) {
  switch (model.family) {
    case Family::normal: return row.Scale + normal_quantile(p) / row.Shape;
    case Family::lognormal: return row.T0 + row.Scale * std::exp(normal_quantile(p) / row.Shape);
    case Family::gumbel: {
      const double z = model.code == model_code::gumbel_upper ? -std::log(-std::log(p))
                                                              : std::log(-std::log1p(-p));
      return 1 / row.Scale + row.Shape * z;
    }
    case Family::weibull: break;
    case Family::none:
      if (model.code != model_code::by_failure_mode) return infinity;
  }
  if (is_unreached(row) || !(row.Scale > 0)) return infinity;
  return row.T0 + std::pow(-std::log1p(-p), 1 / row.Shape) / row.Scale;
}

/// All doubles in their order, by number.
double double_of(std::int64_t number) {
  return number < 0 ? -std::bit_cast<double>(-number) : std::bit_cast<double>(number);
}

/// The smallest time at which p has failed: halves the doubles themselves, which needs no
/// bracket and ends after 64 steps.
std::optional<double> searched_quantile(const Life& life, double p) {
  constexpr double largest = std::numeric_limits<double>::max();
  const auto reached = [&](double x) {
    return p > 0.5 ? reliability(life, x) <= 1 - p : fraction_failed(life, x) >= p;
  };
  std::int64_t above = std::bit_cast<std::int64_t>(largest);
  std::int64_t below = -above;
  if (!reached(largest)) return std::nullopt;
  while (below + 1 < above) {
    const std::int64_t middle = std::midpoint(below, above);
    (reached(double_of(middle)) ? above : below) = middle;
  }
  return double_of(above);
}

/// The least of the times that the risks of a term draw.
double least_time(const Model& model, const Life& life, std::int32_t bits,
                  const std::function<double()>& uniform) {
  double least = infinity;
  for (const FitParam& row : life.rows)
    if ((row.Applies & bits) != 0) least = std::min(least, row_quantile(model, row, uniform()));
  return least;
}

}  // namespace

double fraction_failed(const Life& life, double x) {
  const ActsAt acts(life, x);
  double F = 0;
  for_each_term(life, [&](double share, std::int32_t bits) {
    F -= share * std::expm1(acts.ln_survival(bits));
  });
  return std::min(F, 1.0);
}

double reliability(const Life& life, double x) {
  const ActsAt acts(life, x);
  double R = 0;
  for_each_term(life, [&](double share, std::int32_t bits) {
    R += share * std::exp(acts.ln_survival(bits));
  });
  return std::min(R, 1.0);
}

double ln_density(const Life& life, double x) {
  const ActsAt acts(life, x);
  LogSum sum;
  for_each_term(life, [&](double share, std::int32_t bits) {
    acts.for_each_density(bits, [&](double ln_f) { sum.add(std::log(share) + ln_f); });
  });
  return sum.value();
}

std::optional<double> quantile(const Life& life, double p) {
  const Model* model = find_model(life.model);
  if (!model || !(p > 0 && p < 1)) return std::nullopt;
  if (life.rows.size() != 1) return searched_quantile(life, p);
  const double x = row_quantile(*model, life.rows.front(), p);
  // Below the smallest double the time of a life that starts at 0 is lost.
  const bool lost = model->x_scale() == x_scale::log && x == 0;
  return std::isfinite(x) && !lost ? std::optional(x) : std::nullopt;
}

double draw(const Life& life, const std::function<double()>& uniform) {
  const Model* model = find_model(life.model);
  if (!model) return infinity;
  double rest = uniform();
  std::int32_t chosen = 0;
  for_each_term(life, [&](double share, std::int32_t bits) {
    if (rest >= 0) chosen = bits;
    rest -= share;
  });
  return least_time(*model, life, chosen, uniform);
}

}  // namespace tavlo
