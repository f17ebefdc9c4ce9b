#include "project/records.h"

#include "life/models.h"

namespace tavlo {

int find_slot(const FitSet& fits, int model_code, int method_code, bool censored) {
  for (int k = 1; k <= fits.nFits; ++k) {
    const FitResult& fit = fits.Fits(k);
    const bool same = !fit.is_given && fit.Method == method_code && fit.ModelCode == model_code;
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

bool same_content(const DataSet& a, const DataSet& b) {
  return a.UniqueId == b.UniqueId && a.Title == b.Title && a.rows == b.rows &&
         a.ModeNames == b.ModeNames && a.own_ranks == b.own_ranks && a.XScale == b.XScale &&
         a.YScale == b.YScale && a.Flag2 == b.Flag2 && a.Reserved == b.Reserved &&
         a.SummarySpare == b.SummarySpare && a.SummaryMode == b.SummaryMode &&
         a.SummaryState == b.SummaryState && a.Inspection == b.Inspection &&
         a.Profiles == b.Profiles && a.is_read() == b.is_read() &&
         (a.own_ranks || a.reading.ranks() == b.reading.ranks());
}

}  // namespace tavlo
