#include "actions/parameter_labels.h"

namespace tavlo {

const ParameterLabels& parameter_labels(Family family) {
  static constexpr ParameterLabels gumbel = {" Xi: ", "Del: ", "Xi", "Del"};
  static constexpr ParameterLabels normal = {" mu: ", "sigma: ", "mu", "sigma"};
  static constexpr ParameterLabels lognormal = {" Med: ", "sigF: ", "Med", "sdF"};
  static constexpr ParameterLabels weibull = {" eta: ", "beta: ", "eta", "beta"};
  switch (family) {
    case Family::gumbel: return gumbel;
    case Family::normal: return normal;
    case Family::lognormal: return lognormal;
    case Family::weibull:
    case Family::none: break;
  }
  return weibull;
}

}  // namespace tavlo
