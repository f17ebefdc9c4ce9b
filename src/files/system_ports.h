// System ports: the real clock and the real source of chance, for every front
// end that runs outside a test.
#pragma once

#include "ports/clock.h"
#include "ports/entropy.h"

namespace tavlo {

/// The system's clock, in local time.
class SystemClock : public Clock {
 public:
  double seconds_since_midnight() override;
  DateTime now() override;
  double day_count() override;
  double steady_seconds() override;
};

/// The random numbers of the operating system.
class RandomEntropy : public Entropy {
 public:
  std::uint32_t next() override;
};

}  // namespace tavlo
