#include "cli/ordered_work.h"

#ifdef TAVLO_PLAIN_THREADS

#include "fit/parallel.h"

namespace tavlo::cli {

void run_in_order(std::size_t in_flight, const OrderedWork& steps) {
  for (std::size_t count = in_flight; count == in_flight;) {
    count = 0;
    while (count < in_flight && steps.read(count)) ++count;
    for_each_index(count, steps.work);
    for (std::size_t place = 0; place < count; ++place) steps.write(place);
  }
}

}  // namespace tavlo::cli

#else

#include <oneapi/tbb/parallel_pipeline.h>

namespace tavlo::cli {

// Pieces end in order and at most `in_flight` live, so their number tells a free place.
void run_in_order(std::size_t in_flight, const OrderedWork& steps) {
  std::size_t next = 0;
  const auto read = [&](tbb::flow_control& flow) {
    const std::size_t place = next++ % in_flight;
    if (!steps.read(place)) flow.stop();
    return place;
  };
  const auto work = [&](std::size_t place) {
    steps.work(place);
    return place;
  };
  using Mode = tbb::filter_mode;
  tbb::parallel_pipeline(
      in_flight, tbb::make_filter<void, std::size_t>(Mode::serial_in_order, read) &
                     tbb::make_filter<std::size_t, std::size_t>(Mode::parallel, work) &
                     tbb::make_filter<std::size_t, void>(Mode::serial_in_order, steps.write));
}

}  // namespace tavlo::cli

#endif
