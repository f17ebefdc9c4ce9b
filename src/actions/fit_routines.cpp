#include "actions/fit_routines.h"

#include "actions/classical_fits.h"
#include "actions/fit_by_mode.h"
#include "actions/line_fits.h"
#include "solver/fit_line.h"

namespace tavlo {
namespace {

bool refuse(Prompts& prompts, const char* words) {
  prompts.show({"", words, BoxIcon::exclamation, BoxButtons::ok});
  return false;
}

bool run_likelihood(Session& session, const Model& model, DataSet& data, FitResult& fit) {
  Prompts& prompts = session.ports.prompts;
  switch (model.routine) {
    case FitRoutine::weibull: return Fit_Wb123(session.errors, prompts, data, fit, 1), true;
    case FitRoutine::normal:
      return refuse(prompts, "MLE for Normal, LogNormal not programmed in Fit_Distribution");
    case FitRoutine::lognormal3:
      return refuse(prompts, "MLE 3Par LN not programmed in Fit_Distribution");
    case FitRoutine::gumbel:
      return refuse(prompts, "MLE Gumbel not programmed in Fit_Distribution");
    case FitRoutine::by_mode:
    case FitRoutine::custom:
    case FitRoutine::mixture: break;
  }
  return true;
}

bool run_regression(Session& session, const Model& model, DataSet& data, FitResult& fit) {
  Prompts& prompts = session.ports.prompts;
  ErrorReporter& errors = session.errors;
  switch (model.routine) {
    case FitRoutine::weibull: return Fit_Wb123(errors, prompts, data, fit, 1), true;
    case FitRoutine::normal: return Fit_Norm(errors, prompts, data, fit), true;
    case FitRoutine::gumbel: return Fit_Gumbel(errors, prompts, data, fit), true;
    case FitRoutine::by_mode: return Fit_by_Mode(errors, prompts, data, fit), true;
    case FitRoutine::lognormal3: return refuse(prompts, "3Par LN not programmed");
    case FitRoutine::custom: return refuse(prompts, "Custom not programmed");
    case FitRoutine::mixture: break;
  }
  return true;
}

/// The solver also answers, by a refusal, for what no other routine takes.
bool is_for_solver(const Model& model, int method) {
  const bool likelihood = method == method_code::mle;
  return model.routine == FitRoutine::mixture ||
         (likelihood &&
          (model.routine == FitRoutine::by_mode || model.routine == FitRoutine::custom));
}

}  // namespace

bool run_routine(Session& session, const Model& model, int data_index, int fit_index,
                 FitResult& fit) {
  if (is_for_solver(model, fit.Method))
    return Fit_Line(session, data_index, fit_index, model.code, fit.Method), true;
  DataSet& data = session.gData(data_index);
  return fit.Method == method_code::mle ? run_likelihood(session, model, data, fit)
                                        : run_regression(session, model, data, fit);
}

}  // namespace tavlo
