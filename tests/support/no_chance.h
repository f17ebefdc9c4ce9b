// NoChance: an entropy that always says the same, for plans whose seeds are given.
#pragma once

#include "ports/entropy.h"

namespace tavlo::test {

struct NoChance : Entropy {
  std::uint32_t next() override { return 12345; }
};

}  // namespace tavlo::test
