// Parallel: the one way in which work is shared between the cores. Tasks write their
// results by index, so that any number of threads gives the same bits.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace tavlo {

/// Calls task(i) for i from 0 to count - 1, on as many cores as there are. Returns when
/// all are done. A task must not throw, and touches nothing that another one writes.
void for_each_index(std::size_t count, const std::function<void(std::size_t)>& task);

/// Sorts ascending, in place; no value is NaN.
void sort_values(std::vector<float>& values);

/// The number of threads used from now on; 0 is one for each core.
void set_threads(int count);

}  // namespace tavlo
