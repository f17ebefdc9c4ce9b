#include "analyses/macro_row.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "life/models.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr int single_digits = 7;

struct MacroModel {
  std::int16_t size;
  std::int16_t code;
  std::vector<std::size_t> rows;  ///< of the life, in the order A, B, C
  enum class Last { none, minimum_life, share } last;
};

const std::array<MacroModel, 5>& macro_models() {
  using Last = MacroModel::Last;
  static const std::array<MacroModel, 5> models = {{
      {2, model_code::weibull2, {0}, Last::none},
      {3, model_code::weibull3, {0}, Last::minimum_life},
      {4, model_code::weibull4, {0, 1}, Last::none},
      {5, model_code::weibull5c, {1, 0}, Last::share},
      {7, model_code::weibull7, {1, 2, 0}, Last::share},
  }};
  return models;
}

std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

std::string parameter_field(double value) {
  const double size = std::abs(value);
  if (size == 0.0) return " 0       ";
  if (size > 999999 || size < 0.0001) return format_number(value, "0.00E-00 ");
  if (size < 0.1) return format_number(value, ".000000 ");
  return padded(number_text(static_cast<float>(value), single_digits), 8) + ' ';
}

/// Cut to its ten characters, as long as only decimals are lost.
std::string quality_field(double value) {
  constexpr std::size_t width = 10;
  const std::string text = number_text(value);
  const bool loses_decimals = text.find('.') <= width && text.find('E') == text.npos;
  const bool fits = text.size() <= width || loses_decimals;
  return padded(fits ? text : format_number(value, "0.000E+00"), width) + ' ';
}

}  // namespace

std::optional<FitRequest> request_of(const MacroJob& job) {
  const auto& models = macro_models();
  const auto model = std::find_if(models.begin(), models.end(),
                                  [&](const MacroModel& each) { return each.size == job.size; });
  const bool is_known = model != models.end() && (job.transfer == 1 || job.transfer == 2) &&
                        job.method >= 1 && job.method <= 3;
  if (job.error != 0 || !is_known) return std::nullopt;
  constexpr std::array<std::int16_t, 3> methods = {method_code::x_on_y, method_code::mle,
                                                   method_code::y_on_x};
  FitRequest request;
  request.model = model->code;
  request.method = methods[static_cast<std::size_t>(job.method) - 1];
  return request;
}

std::array<double, 7> macro_parameters(const Life& life) {
  std::array<double, 7> slots{};
  const auto& models = macro_models();
  const auto model = std::find_if(models.begin(), models.end(),
                                  [&](const MacroModel& each) { return each.code == life.model; });
  if (model == models.end()) return slots;
  auto slot = slots.begin();
  for (const std::size_t row : model->rows) {
    const FitParam& population = life.rows.at(row);
    const bool is_reached = !is_unreached(population) && population.Scale > 0;
    *slot++ = is_reached ? population.Shape : 0;
    *slot++ = is_reached ? 1 / population.Scale : 0;
  }
  if (model->last == MacroModel::Last::minimum_life) *slot = life.rows.at(0).T0;
  if (model->last == MacroModel::Last::share) *slot = life.rows.at(0).Fraction;
  return slots;
}

std::string macro_row(const MacroJob& job, double quality,
                      const std::array<double, 7>& parameters) {
  std::string row = format_number(job.size, "0 ") + format_number(job.method, "0 ") + "0  " +
                    quality_field(quality);
  for (const double value : parameters) row += parameter_field(value);
  return row;
}

}  // namespace tavlo
