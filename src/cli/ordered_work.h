// Ordered work: a stream of pieces that are read in order, worked on at the same time and
// written in order. Only a few are in flight, so memory does not grow with the stream, and
// any number of cores gives the same results.
#pragma once

#include <cstddef>
#include <functional>

namespace tavlo::cli {

/// The three steps. Each is given the place, from 0 to the number in flight, at which its
/// piece stands. `work` must not throw.
struct OrderedWork {
  std::function<bool(std::size_t place)> read;  ///< false at the end of the stream
  std::function<void(std::size_t place)> work;
  std::function<void(std::size_t place)> write;
};

void run_in_order(std::size_t in_flight, const OrderedWork& steps);

}  // namespace tavlo::cli
