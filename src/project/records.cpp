#include "project/records.h"

#include "life/models.h"

namespace tavlo {

int find_slot(const FitSet& fits, int model_code, int method_code, bool censored) {
  for (int k = 1; k <= fits.nFits; ++k) {
    const FitResult& fit = fits.Fits(k);
    const bool same = fit.Method == method_code && fit.ModelCode == model_code;
    if (same && fit.request.censored == censored) return k;
  }
  return 0;
}

DataSet fuStandardData() { return {}; }

FitSet fuStandard_Fit() {
  FitSet fits;
  fits.Fits(0).ModelCode = model_code::weibull2;
  return fits;
}

}  // namespace tavlo
