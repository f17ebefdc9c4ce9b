// FitWorld: a session with one ranked data set and one fit set, and the fits that
// Fit_Line makes of it.
#pragma once

#include <cmath>

#include "life/models.h"
#include "solver/fit_line.h"
#include "support/mixture_samples.h"
#include "support/test_world.h"

namespace tavlo::test {

struct FitWorld : TestWorld {
  explicit FitWorld(const DataSet& data) {
    New_frm_Data(session);
    New_frm_Fit(session);
    session.gData(1) = data;
    session.solver.minimum_life_warned = true;
  }

  /// The fit, as it stands in the record; an empty one when there is no slot.
  FitResult fit(std::int16_t model, std::int16_t method) {
    Fit_Line(session, 1, 1, model, method);
    const FitSet& fits = session.gFit(1);
    const int slot = find_slot(fits, model, method);
    return slot > 0 ? fits.Fits(slot) : FitResult{};
  }

  std::string last_status() const {
    for (auto line = views.said.rbegin(); line != views.said.rend(); ++line)
      if (line->rfind("status ", 0) == 0) return line->substr(7);
    return "";
  }
};

/// The model of a stored W4P, W5C or W7P fit.
inline TrueMixture mixture_of(const FitResult& fit) {
  const auto beta = [&](int row) { return fit.Rows(row).Shape; };
  const auto eta = [&](int row) { return 1 / fit.Rows(row).Scale; };
  if (fit.ModelCode == model_code::weibull4) return {4, beta(1), eta(1), beta(2), eta(2), 0, 1, 0};
  TrueMixture mixture{5, beta(2), eta(2), 0, 1, beta(1), eta(1), fit.Rows(1).Fraction};
  if (fit.ModelCode == model_code::weibull7)
    mixture.K = 7, mixture.beta_b = beta(3), mixture.eta_b = eta(3);
  return mixture;
}

inline constexpr std::int16_t mixtures[] = {model_code::weibull4, model_code::weibull5c,
                                            model_code::weibull7};
inline constexpr std::int16_t all_methods[] = {method_code::x_on_y, method_code::mle,
                                               method_code::y_on_x};

/// A usual sample's truth for each model.
inline TrueMixture usual_mixture(std::int16_t model) {
  if (model == model_code::weibull4) return {4, 3.5, 1500, 0.8, 500, 0, 1, 0};
  if (model == model_code::weibull5c) return {5, 3, 1000, 0, 1, 2, 50, 0.2};
  return {7, 4, 1000, 1, 3000, 2, 50, 0.15};
}

}  // namespace tavlo::test
