#include "fit/request.h"

namespace tavlo {

bool has_censored_choice(int model_code, int method_code) {
  const Model* model = find_model(model_code);
  return model && model->routine == FitRoutine::mixture && method_code == method_code::mle;
}

bool leaves_suspensions_out(const Sample& sample, const FitRequest& request) {
  return sample.total_suspensions > 0 && !request.censored &&
         has_censored_choice(request.model, request.method);
}

}  // namespace tavlo
