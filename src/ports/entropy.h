// Entropy: numbers that nobody can foresee, to seed a random sample.
#pragma once

#include <cstdint>

namespace tavlo {

class Entropy {
 public:
  virtual ~Entropy() = default;
  virtual std::uint32_t next() = 0;
};

}  // namespace tavlo
