// Start points: where the further starts of a mixture begin, one after another.
#pragma once

#include <random>
#include <vector>

#include "project/solver_state.h"

namespace tavlo {

class StartPoints {
 public:
  /// The promising ones come first, in their order.
  StartPoints(std::vector<ParameterVector> promising, int K);

  /// The next start (parameters in slots 1 to K), around the `best` answer so far
  /// where no promising one is left. Always the same sequence.
  ParameterVector next(const ParameterVector& best);

 private:
  ParameterVector stepped(ParameterVector X);
  double symmetric();

  int K_;
  std::vector<ParameterVector> promising_;
  std::size_t promising_used_ = 0;
  int exchanges_used_ = 0;
  int steps_used_ = 0;
  std::mt19937_64 random_;
};

}  // namespace tavlo
