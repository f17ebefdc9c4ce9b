#include "numerics/sorting.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tavlo {

void Sort_Array(ErrorReporter& reporter, Slots<double>& list, int count) {
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"Error during Sort: ", "Array Size:" + std::to_string(list.bound()),
                  "Sort_Array routine:"});
  };
  guarded(reporter, words, [&] {
    const int last = count < 1 || count > list.bound() ? list.bound() : count;
    const auto begin = list.begin() + 1;
    const auto end = begin + last;
    // NaN has no place in an order: the sort would leave the others unsorted.
    if (std::any_of(begin, end, [](double value) { return std::isnan(value); }))
      throw RunTimeError(run_time::invalid_argument);
    std::sort(begin, end);
  });
}

}  // namespace tavlo
