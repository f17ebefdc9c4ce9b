#include "analyses/stated_life.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tavlo {

namespace {

/// Scale and shape of a family by the two numbers that a person reads.
FitParam row_of(Family family, double first, double second) {
  FitParam row;
  row.Scale = family == Family::weibull || family == Family::gumbel ? 1 / first : first;
  row.Shape = family == Family::normal      ? 1 / second
              : family == Family::lognormal ? 1 / std::log(second)
                                            : second;
  return row;
}

bool is_finite(const FitParam& row) {
  return std::isfinite(row.Scale) && std::isfinite(row.Shape) && std::isfinite(row.T0);
}

std::optional<LifeFault> fault_of(Family family, double first, double second) {
  switch (family) {
    case Family::normal: return second > 0 ? std::nullopt : std::optional(LifeFault::scale);
    case Family::gumbel:
      return second > 0 && first != 0 ? std::nullopt : std::optional(LifeFault::scale);
    default: break;
  }
  if (!(first > 0)) return LifeFault::scale;
  const double least = family == Family::lognormal ? 1 : 0;
  return second > least ? std::nullopt : std::optional(LifeFault::slope);
}

bool is_whole(const Model& model, const StatedRow& row, int population) {
  return row.first && row.second && (row.percent || !states_share(model, population));
}

/// The percents of the populations that have one make up all units.
bool are_shares(const Model& model, const std::vector<StatedRow>& rows) {
  constexpr double rounding = 1e-4;  // of percents as typed
  double sum = 0;
  for (int i = 1; i <= ssize(rows); ++i) {
    if (!states_share(model, i)) continue;
    const double percent = *rows[static_cast<std::size_t>(i) - 1].percent;
    if (!(percent >= 0)) return false;
    sum += percent;
  }
  return !states_share(model, 1) || std::abs(sum - 100) <= rounding;
}

}  // namespace

bool is_sampled(std::int16_t model) {
  constexpr std::array sampled = {
      model_code::weibull2,  model_code::weibull3,     model_code::weibull4,
      model_code::weibull5c, model_code::weibull7,     model_code::normal,
      model_code::lognormal, model_code::gumbel_lower, model_code::gumbel_upper};
  return std::find(sampled.begin(), sampled.end(), model) != sampled.end();
}

bool states_share(const Model& model, int population) {
  return model.has_shares() && population <= 2;
}

std::optional<LifeFault> fault_of(const Model& model, const std::vector<StatedRow>& rows,
                                  double t0) {
  if (!is_sampled(model.code) || ssize(rows) != model.rows()) return LifeFault::model;
  for (int i = 1; i <= ssize(rows); ++i) {
    const StatedRow& row = rows[static_cast<std::size_t>(i) - 1];
    if (!is_whole(model, row, i)) return LifeFault::missing;
    if (const auto fault = fault_of(model.family, *row.first, *row.second)) return fault;
  }
  if (!are_shares(model, rows)) return LifeFault::shares;
  const Life life = stated_life(model, rows, t0);
  const bool is_life = std::all_of(life.rows.begin(), life.rows.end(), is_finite);
  return is_life ? std::nullopt : std::optional(LifeFault::number);
}

Life stated_life(const Model& model, const std::vector<StatedRow>& rows, double t0) {
  Life life{model.code, {}};
  for (int i = 1; i <= ssize(rows); ++i) {
    const StatedRow& stated = rows[static_cast<std::size_t>(i) - 1];
    FitParam row = row_of(model.family, stated.first.value_or(NAN), stated.second.value_or(NAN));
    const bool has_share = states_share(model, i);
    row.Fraction = has_share ? stated.percent.value_or(NAN) / 100 : i == 1 ? 1 : 0;
    // A mixture's first population is the early one: the risks of the others act in it too.
    row.Applies = states_share(model, 2) && i > 1 ? 3 : 1;
    row.T0 = t0;
    life.rows.push_back(row);
  }
  return life;
}

}  // namespace tavlo
