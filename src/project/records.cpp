#include "project/records.h"

#include "life/models.h"

namespace tavlo {

int find_slot(const FitSet& fits, int model_code, int method_code) {
  for (int k = 1; k <= fits.nFits; ++k)
    if (fits.Fits(k).Method == method_code && fits.Fits(k).ModelCode == model_code) return k;
  return 0;
}

DataSet fuStandardData() { return {}; }

FitSet fuStandard_Fit() {
  FitSet fits;
  fits.Fits(0).ModelCode = model_code::weibull2;
  return fits;
}

}  // namespace tavlo
