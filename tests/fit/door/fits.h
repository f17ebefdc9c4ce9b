// A fit in one line, for tests of fits.
#pragma once

#include <gtest/gtest.h>

#include "fit/door/fit.h"
#include "support/random_samples.h"
#include "support/relative_difference.h"

namespace tavlo::test {

struct Asked {
  std::int16_t model = model_code::weibull2;
  std::int16_t method = method_code::x_on_y;
  std::optional<double> slope = {};
  RankKind ranks = RankKind::benard;
  bool censored = false;

  bool by_likelihood() const { return method == method_code::mle; }
  std::string name() const {
    static constexpr const char* methods[] = {"/rr", "/mle", "/rrs"};
    return find_model(model)->command_name + std::string(methods[method]) + (censored ? "c" : "");
  }
};

inline FitRequest request_of(const Asked& asked) {
  FitRequest request;
  request.model = asked.model;
  request.method = asked.method;
  request.slope = asked.slope;
  request.ranks = asked.ranks;
  request.censored = asked.censored;
  return request;
}

inline FitAnswer fit_sample(const Sample& sample, const Asked& asked) {
  Companion companion;
  return fit(sample, request_of(asked), companion);
}

inline FitAnswer fit_rows(const Rows& rows, const Asked& asked, int modes = 0) {
  return fit_sample(make_sample(rows, asked.ranks, modes), asked);
}

/// The fit, which must be there.
inline Fit fit_of(const FitAnswer& answer) {
  if (!answer.fit()) ADD_FAILURE() << "refused: " << static_cast<int>(answer.refusal()->code);
  return answer.fit() ? *answer.fit() : Fit{};
}

inline const std::int16_t all_methods[] = {method_code::x_on_y, method_code::mle,
                                           method_code::y_on_x};
inline const std::int16_t regressions[] = {method_code::x_on_y, method_code::y_on_x};

inline const std::int16_t mixtures[] = {model_code::weibull4, model_code::weibull5c,
                                        model_code::weibull7};

/// A mixture by each method, with the suspensions in its likelihood too.
inline std::vector<Asked> ways_of(std::int16_t model) {
  std::vector<Asked> ways;
  for (const std::int16_t method : all_methods) ways.push_back({model, method});
  ways.push_back({.model = model, .method = method_code::mle, .censored = true});
  return ways;
}

/// Every fit that needs no search.
inline std::vector<Asked> classical_fits() {
  std::vector<Asked> fits;
  for (const std::int16_t method : all_methods)
    for (const std::int16_t code :
         {model_code::weibull2, model_code::weibull_12_month, model_code::exponential,
          model_code::rayleigh, model_code::weibayes, model_code::by_failure_mode})
      fits.push_back({code, method, 1.7});
  for (const std::int16_t method : regressions)
    for (const std::int16_t code : {model_code::weibull3, model_code::normal, model_code::lognormal,
                                    model_code::gumbel_lower, model_code::gumbel_upper})
      fits.push_back({code, method, 1.7});
  return fits;
}

/// Every fit that is searched.
inline std::vector<Asked> searched_fits() {
  std::vector<Asked> fits = {{model_code::weibull3, method_code::mle}};
  for (const std::int16_t model : mixtures)
    for (const Asked& way : ways_of(model)) fits.push_back(way);
  return fits;
}

}  // namespace tavlo::test
