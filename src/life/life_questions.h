// Life questions: what a person asks of a fitted life beside its parameters.
#pragma once

#include <vector>

namespace tavlo {

struct LifeQuestions {
  std::vector<double> percents = {1, 10, 50};  ///< failed; above 0 and below 100
  std::vector<double> times = {};              ///< for the reliability there

  friend bool operator==(const LifeQuestions&, const LifeQuestions&) = default;
};

}  // namespace tavlo
