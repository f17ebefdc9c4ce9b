#include "life/parameter_names.h"

namespace tavlo {

const ParameterNames& parameter_names(Family family) {
  static constexpr ParameterNames weibull = {.key = {"eta", "beta"},
                                             .table = {"eta", "beta"},
                                             .log = {" eta: ", "beta: "},
                                             .grid = {"eta", "beta"},
                                             .chart = {"eta", "beta"}};
  static constexpr ParameterNames gumbel = {.key = {"xi", "del"},
                                            .table = {"Xi", "Del"},
                                            .log = {" Xi: ", "Del: "},
                                            .grid = {"Xi", "Del"},
                                            .chart = {"Xi", "Del"}};
  static constexpr ParameterNames normal = {.key = {"mu", "sigma"},
                                            .table = {"mu", "sigma"},
                                            .log = {" mu: ", "sigma: "},
                                            .grid = {"mu", "sigma"},
                                            .chart = {"mu", "sigma"}};
  static constexpr ParameterNames lognormal = {.key = {"median", "sigma_factor"},
                                               .table = {"median", "sigma factor"},
                                               .log = {" Med: ", "sigF: "},
                                               .grid = {"Med", "sdF"},
                                               .chart = {"Med", "SigF"}};
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
