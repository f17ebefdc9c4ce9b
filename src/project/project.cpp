#include "project/project.h"

namespace tavlo {

namespace {

template <class Records>
int index_of(const Records& records, std::int32_t unique_id) {
  for (int i = 1; i <= records.bound(); ++i)
    if (records(i).UniqueId == unique_id) return i;
  return 0;
}

}  // namespace

int find_data(const Project& project, std::int32_t unique_id) {
  return index_of(project.data, unique_id);
}

int find_fit(const Project& project, std::int32_t unique_id) {
  return index_of(project.fits, unique_id);
}

int data_of_fits(const Project& project, int fit_index) {
  const FitSet& fits = project.fits(fit_index);
  const int named = fits.DataIds.bound() >= 1 ? find_data(project, fits.DataIds(1)) : 0;
  if (named > 0) return named;
  return fit_index <= project.data.bound() ? fit_index : 0;
}

int fit_set_of(const Project& project, const ChartMarker& marker) {
  const int data_index = marker.DataId == 0 ? 0 : find_data(project, marker.DataId);
  if (data_index == 0) return 0;
  if (const int own = find_fit(project, marker.FitId)) return own;
  return data_index <= project.fits.bound() ? data_index : 0;
}

void forget_samples(const Project& project) {
  for (const DataSet& data : project.data) data.reading.forget_sample();
}

}  // namespace tavlo
