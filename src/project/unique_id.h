// Unique identities: 32-bit numbers that count steps of 1.5 s since 2009 and
// rise strictly within a run.
#pragma once

#include <cstdint>

#include "ports/clock.h"

namespace tavlo {

class UniqueIds {
 public:
  /// A new identity; error 6 when the 32 bits are used up.
  std::int32_t fl_NewUniqueId(Clock& clock);

 private:
  std::int32_t last_ = 0;
};

}  // namespace tavlo
