#include "project/unique_id.h"

#include <limits>

#include "numerics/rounding.h"

namespace tavlo {

std::int32_t UniqueIds::fl_NewUniqueId(Clock& clock) {
  constexpr double day_zero = 39814.0;  // 1 January 2009
  constexpr double steps_a_day = 57600.0;
  std::int32_t id = ToInt32((clock.day_count() - day_zero) * steps_a_day);
  if (id <= last_) {
    if (last_ == std::numeric_limits<std::int32_t>::max()) throw RunTimeError(run_time::overflow);
    id = last_ + 1;
  }
  last_ = id;
  return id;
}

}  // namespace tavlo
