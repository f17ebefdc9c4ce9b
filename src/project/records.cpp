#include "project/records.h"

#include "project/models.h"

namespace tavlo {

DataSet fuStandardData() { return {}; }

FitSet fuStandard_Fit() {
  FitSet fits;
  fits.Fits(0).ModelCode = model_code::weibull2;
  return fits;
}

}  // namespace tavlo
