#include "chart/parts/fraction_on_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <optional>

#include "life/models.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

constexpr double lowest_fraction = 1e-14;
constexpr double highest_fraction = 0.99999999999999;

/// Reading of a fit whose parameters or time lie outside its model.
constexpr double no_reading = 1e-30;

/// Limits of ln R, so that a far time reads as the limits above, never as 0 or 1.
constexpr double lowest_log_survival = -32.23;
constexpr double highest_log_survival = -9.99e-15;
constexpr double exponent_limit = 700;

/// `Applies` holds one bit for each sub-population, 30 of them.
constexpr int most_rows = 30;

/// One value for each row of a fit, from index 1.
using RowValues = std::array<double, most_rows + 1>;

template <class RowFunction>
RowValues for_each_row(const FitResult& fit, RowFunction value_of) {
  if (fit.nRows > most_rows) throw RunTimeError(run_time::overflow);
  RowValues values{};
  for (int j = 1; j <= fit.nRows; ++j) values[static_cast<std::size_t>(j)] = value_of(fit.Rows(j));
  return values;
}

double held(Real fraction) {
  return std::clamp(fraction.value(), lowest_fraction, highest_fraction);
}

/// 1 - the sum of the terms' shares times their survival, which
/// `survival_of(bit)` gives for the term of that bit; nothing when the term is
/// to take nothing off.
template <class Survival>
Real fraction_left(const FitResult& fit, Survival survival_of) {
  Real F = 1;
  std::int32_t bit = 1;
  for (int i = 1; i <= fit.nRows; ++i, bit *= 2) {
    const double share = fit.Rows(i).Fraction;
    if (!(share > 0)) continue;
    if (const std::optional<double> survival = survival_of(bit)) F -= Real(*survival) * share;
  }
  return F;
}

Real sum_of_risks(const FitResult& fit, const RowValues& log_survivals, std::int32_t bit) {
  Real sum = 0;
  for (int j = 1; j <= fit.nRows; ++j)
    if (fit.Rows(j).Applies & bit) sum += log_survivals[static_cast<std::size_t>(j)];
  return sum;
}

/// ln R of one risk of a Weibull mixture; 0 at or below its minimum life.
double limited_log_survival(const FitParam& row, double x) {
  const Real d = Real(x) - row.T0;
  if (!(d > 0) || !(row.Scale > 0)) return 0;
  const Real z = row.Shape * ln(d * row.Scale);
  if (z > exponent_limit) return lowest_log_survival;
  if (z < -exponent_limit) return highest_log_survival;
  return -pow(d * row.Scale, row.Shape).value();
}

double limited_survival(Real log_survival) {
  if (log_survival <= lowest_log_survival) return std::exp(lowest_log_survival);
  if (log_survival >= highest_log_survival) return std::exp(highest_log_survival);
  return exp(log_survival).value();
}

/// Gumbel Lower (smallest value) and Upper (largest value): the first row only.
double gumbel(const FitResult& fit, double x, bool lower) {
  const FitParam& row = fit.Rows(1);
  if (row.Scale == 0 || !(row.Shape > 0)) return no_reading;
  const Real far = -1 / (Real(row.Shape) * row.Scale) + Real(x) / row.Shape;
  const Real z = std::clamp(far.value(), -exponent_limit, exponent_limit);
  return held(lower ? 1 - exp(-exp(z)) : exp(-exp(-z)));
}

/// The failure modes act on every unit; there may be more of them than `Applies` has bits.
double all_modes(const FitResult& fit, double x) {
  Real log_survival = 0;
  for (int j = 1; j <= fit.nRows; ++j) log_survival += limited_log_survival(fit.Rows(j), x);
  return held(x <= 0 ? Real(0) : 1 - exp(log_survival));
}

/// 1 - the sum of shares times the products of the rows' survivals.
double product_mixture(const FitResult& fit, const RowValues& survivals) {
  const Real F = fraction_left(fit, [&](std::int32_t bit) -> std::optional<double> {
    std::optional<double> product;
    for (int j = 1; j <= fit.nRows; ++j)
      if (fit.Rows(j).Applies & bit)
        product = product.value_or(1.0) * survivals[static_cast<std::size_t>(j)];
    return product;
  });
  return held(F);
}

double normal_survival(Real z) { return std::erfc(z.value() * std::numbers::sqrt2 / 2) / 2; }

double normal(const FitResult& fit, double x) {
  return product_mixture(fit, for_each_row(fit, [&](const FitParam& row) {
                           return normal_survival((Real(x) - row.Scale) * row.Shape);
                         }));
}

double lognormal(const FitResult& fit, double x) {
  for (int j = 1; j <= fit.nRows; ++j) {
    const FitParam& row = fit.Rows(j);
    if (!(x - row.T0 > 0 && row.Scale > 0 && row.Shape > 0)) return no_reading;
  }
  return product_mixture(fit, for_each_row(fit, [&](const FitParam& row) {
                           const Real z = (ln(Real(x) - row.T0) - ln(Real(row.Scale))) * row.Shape;
                           return normal_survival(z);
                         }));
}

}  // namespace

double fd_Wbl(const FitResult& fit, double x) {
  // A term without any risk at x takes nothing off, so that it reads as failed:
  // kept on purpose, charts start the line of a three-parameter Weibull there.
  const RowValues risks =
      for_each_row(fit, [x](const FitParam& row) { return limited_log_survival(row, x); });
  const Real F = fraction_left(fit, [&](std::int32_t bit) -> std::optional<double> {
    const Real sum = sum_of_risks(fit, risks, bit);
    if (sum == 0) return std::nullopt;
    return limited_survival(sum);
  });
  return held(x <= 0 ? Real(0) : F);
}

double Fd_YofX(const FitResult& fit, double x) {
  switch (fit.ModelCode & model_mask) {
    case model_code::gumbel_lower: return gumbel(fit, x, true);
    case model_code::gumbel_upper: return gumbel(fit, x, false);
    case model_code::custom: return 0;
    case model_code::normal: return normal(fit, x);
    case model_code::lognormal:
    case model_code::lognormal3: return lognormal(fit, x);
    case model_code::by_failure_mode: return all_modes(fit, x);
    default: return fd_Wbl(fit, x);
  }
}

}  // namespace tavlo
