#include "fit/line/line_fits.h"

#include <cmath>

#include "fit/line/weighted_line.h"
#include "numerics/compensated_sum.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

/// x = place + width y, whichever way the line was regressed.
struct PaperLine {
  double place = 0;
  double width = 0;
  double r_squared = 0;
};

std::optional<Refusal> refusal_of(const WeightedLine& line, bool any_slope) {
  if (line.weight == 0) return Refusal{RefusalCode::no_failure, {}};
  if (!(line.weight >= 1)) return Refusal{RefusalCode::too_few_failures, {line.weight, 1}};
  if (any_slope && !(line.has_u_spread && line.has_v_spread))
    return Refusal{RefusalCode::no_spread, {}};
  return std::nullopt;
}

PaperLine paper_line(const WeightedLine& line, bool y_on_x) {
  if (!y_on_x) return {line.intercept, line.slope, line.r_squared};
  const Real slope = line.slope;
  return {(-Real(line.intercept) / slope).value(), (1 / slope).value(), line.r_squared};
}

WeightedLine regressed(const PaperRows& rows, bool y_on_x) {
  return y_on_x ? weighted_line(rows.weight, rows.x, rows.y)
                : weighted_line(rows.weight, rows.y, rows.x);
}

RowFit population(double scale, double shape, double quality) {
  return {{.Scale = scale, .Fraction = 1, .Shape = shape, .T0 = 0, .Applies = 1}, quality};
}

/// r squared of a given line over the rows. Equal values differ from their mean by rounding
/// alone, which is no spread: the line then is all (one point) or nothing.
double quality_of_line(const PaperRows& rows, bool y_on_x, const WeightedLine& means, double beta,
                       double ln_eta) {
  constexpr double nothing_left = 1e-14;  // of squares of log times
  CompensatedSum about_line;
  CompensatedSum about_mean;
  for (std::size_t i = 0; i < rows.weight.size(); ++i) {
    if (!(rows.weight[i] > 0)) continue;
    const double x = rows.x[i];
    const double y = rows.y[i];
    const double off_line = y_on_x ? y - beta * (x - ln_eta) : x - (y / beta + ln_eta);
    const double off_mean = y_on_x ? y - means.v_mean : x - means.v_mean;
    about_line += rows.weight[i] * off_line * off_line;
    about_mean += rows.weight[i] * off_mean * off_mean;
  }
  if (!means.has_v_spread) return about_line.value() < nothing_left ? 1 : -1;
  return (1 - Real(about_line.value()) / Real(about_mean.value())).value();
}

RowFit line_of_given_slope(const PaperRows& rows, bool y_on_x, const WeightedLine& means,
                           double beta) {
  const double x_mean = y_on_x ? means.u_mean : means.v_mean;
  const double y_mean = y_on_x ? means.v_mean : means.u_mean;
  const double ln_eta = (x_mean - Real(y_mean) / Real(beta)).value();
  return population(std::exp(-ln_eta), beta, quality_of_line(rows, y_on_x, means, beta, ln_eta));
}

Paper paper_of(const Model& model) {
  if (model.code == model_code::gumbel_upper) return Paper::gumbel;
  return model.family == Family::gumbel ? Paper::weibull : Paper::normal;
}

}  // namespace

RowAnswer fit_weibull_line(const PaperRows& rows, bool y_on_x, std::optional<double> slope) {
  const WeightedLine line = regressed(rows, y_on_x);
  if (const auto refusal = refusal_of(line, !slope)) return *refusal;
  if (slope) return line_of_given_slope(rows, y_on_x, line, *slope);
  const PaperLine found = paper_line(line, y_on_x);
  return population(std::exp(-found.place), (1 / Real(found.width)).value(), found.r_squared);
}

RowAnswer fit_other_line(const Sample& sample, const Model& model, bool y_on_x) {
  const bool log_time = model.x_scale() == x_scale::log;
  const PaperRows rows = paper_rows(sample, paper_of(model), log_time);
  const WeightedLine line = regressed(rows, y_on_x);
  if (const auto refusal = refusal_of(line, true)) return *refusal;
  const auto [place, width, r_squared] = paper_line(line, y_on_x);
  if (model.family == Family::gumbel) return population(1 / place, width, r_squared);
  return population(log_time ? std::exp(place) : place, (1 / Real(width)).value(), r_squared);
}

}  // namespace tavlo
