#include "actions/line_fits.h"

#include <cmath>
#include <limits>
#include <optional>

#include "actions/paper_coordinates.h"
#include "actions/polynomial_fit.h"
#include "actions/row_faults.h"
#include "life/models.h"
#include "numerics/normal.h"
#include "numerics/real.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

struct PaperLine {
  Real c0;
  Real c1;
  double r_squared = 0;
};

/// y = c0 + c1 x, or x = c0 + c1 y; nothing when the regression has failed and
/// said so.
std::optional<PaperLine> regression_line(ErrorReporter& reporter, DataSet& data, bool y_on_x) {
  Slots<double> coefficients(1);
  double r_squared = 0;
  if (!PolyFitD(reporter, data, {.order = y_on_x ? 1 : -1}, coefficients, r_squared))
    return std::nullopt;
  return PaperLine{coefficients(0), coefficients(1), r_squared};
}

void store(FitResult& fit, Real scale, Real shape, double quality) {
  fit.Quality = quality;
  fit.Status = FitStatus::calculated;
  fit.nRows = 1;
  fit.Rows = Slots<FitParam>(1);
  fit.Rows(1) = {
      .Scale = scale.value(), .Fraction = 1, .Shape = shape.value(), .T0 = 0, .Applies = 1};
}

auto line_words(const DataSet& data, bool log_time, const char* prefix, const char* place) {
  return [&data, log_time, prefix, place](ErrorReporter& to) {
    to.add_lines({prefix});
    if (log_time) add_zero_time_line(to, data);
    add_rank_line(to, data);
    to.add_lines({place});
  };
}

double normal_ordinate(ErrorReporter& reporter, double Y) {
  if (!(Y > 0 && Y < 1)) throw RunTimeError(run_time::invalid_argument);
  return fd_NormZ(reporter, Y);
}

Real median_of(Real ln_median) {
  const Real median = exp(ln_median);
  if (median < std::numeric_limits<double>::min()) throw RunTimeError(run_time::overflow);
  return median;
}

void fit_normal(ErrorReporter& reporter, DataSet& data, FitResult& fit, bool log_time) {
  const bool y_on_x = fit.Method == method_code::y_on_x;
  write_coordinates(data, log_time, [&](double Y) { return normal_ordinate(reporter, Y); });
  const auto line = regression_line(reporter, data, y_on_x);
  if (!line) return;
  const Real middle = y_on_x ? -line->c0 / line->c1 : line->c0;
  const Real shape = y_on_x ? line->c1 : 1 / line->c1;
  store(fit, log_time ? median_of(middle) : middle, shape, line->r_squared);
}

void fit_gumbel(ErrorReporter& reporter, DataSet& data, FitResult& fit, bool upper) {
  const bool y_on_x = fit.Method == method_code::y_on_x;
  write_coordinates(data, false, [&](double Y) {
    return upper ? -fd_WblYofR(std::fabs(Y)) : fd_WblY(std::fabs(Y));
  });
  const auto line = regression_line(reporter, data, y_on_x);
  if (!line) return;
  const Real scale = y_on_x ? -line->c1 / line->c0 : 1 / line->c0;
  const Real shape = y_on_x ? 1 / line->c1 : line->c1;
  store(fit, scale, shape, line->r_squared);
}

bool is_routine(const FitResult& fit, FitRoutine routine) {
  const Model* model = find_model(fit.ModelCode);
  return model && model->routine == routine;
}

}  // namespace

void Fit_Norm(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit) {
  if (!is_routine(fit, FitRoutine::normal)) {
    prompts.show({"", "Fit_Norm Min Life model not programmed yet"});
    return;
  }
  if (fit.Method == method_code::mle) return;
  const bool log_time = (fit.ModelCode & x_scale_mask) == x_scale::log;
  guarded(reporter, line_words(data, log_time, "(Log)Normal Fit: ", "Fit_Norm routine:"),
          [&] { fit_normal(reporter, data, fit, log_time); });
}

void Fit_Gumbel(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit) {
  if (!is_routine(fit, FitRoutine::gumbel)) {
    prompts.show({"", "This Gumbel model has not been programmed."});
    return;
  }
  if (fit.Method == method_code::mle) return store(fit, 0.0, 0.0, 0.0);
  const bool upper = (fit.ModelCode & model_mask) == model_code::gumbel_upper;
  guarded(reporter, line_words(data, false, "Gumbel Fit: ", "Fit_Gumbel routine:"),
          [&] { fit_gumbel(reporter, data, fit, upper); });
}

}  // namespace tavlo
