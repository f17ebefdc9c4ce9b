#include "fit/parallel.h"

#ifdef TAVLO_PLAIN_THREADS

#include <algorithm>
#include <atomic>
#include <thread>

namespace tavlo {
namespace {

std::atomic<int> wanted{0};
thread_local bool inside = false;  // nested work runs where it is

}  // namespace

void for_each_index(std::size_t count, const std::function<void(std::size_t)>& task) {
  const int asked = wanted;
  const std::size_t cores = asked > 0 ? static_cast<std::size_t>(asked)
                                      : std::max(1U, std::thread::hardware_concurrency());
  const std::size_t threads = inside ? 1 : std::min(cores, count);
  std::atomic<std::size_t> next{0};
  const auto work = [&] {
    const bool before = inside;
    inside = true;
    for (std::size_t i = next++; i < count; i = next++) task(i);
    inside = before;
  };
  std::vector<std::thread> others;
  for (std::size_t i = 1; i < threads; ++i) others.emplace_back(work);
  work();
  for (std::thread& other : others) other.join();
}

void sort_values(std::vector<float>& values) { std::sort(values.begin(), values.end()); }

void set_threads(int count) { wanted = count; }

}  // namespace tavlo

#else

#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/parallel_sort.h>
#include <oneapi/tbb/task_arena.h>

#include <memory>

namespace tavlo {

void for_each_index(std::size_t count, const std::function<void(std::size_t)>& task) {
  if (count == 0) return;
  if (count == 1) return task(0);
  // Isolated: a thread that waits here takes no other caller's work onto its stack.
  tbb::this_task_arena::isolate([&] {
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, 1), [&](const auto& range) {
      for (std::size_t i = range.begin(); i != range.end(); ++i) task(i);
    });
  });
}

void sort_values(std::vector<float>& values) {
  tbb::this_task_arena::isolate([&] { tbb::parallel_sort(values.begin(), values.end()); });
}

void set_threads(int count) {
  static std::unique_ptr<tbb::global_control> control;
  control.reset();
  if (count > 0)
    control = std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism,
                                                    static_cast<std::size_t>(count));
}

}  // namespace tavlo

#endif
