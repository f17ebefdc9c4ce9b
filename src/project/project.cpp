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

}  // namespace tavlo
