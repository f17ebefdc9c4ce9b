// A log of 16 MB as RTF: read, written, and made of entries that are appended one by one.
#include <benchmark/benchmark.h>

#include <string>

#include "project/rich_text.h"

namespace {

constexpr std::size_t size = 16'000'000;
constexpr const char* entry =
    "********** Tavlo Fit **********     11:30 pm\\par {\\b W/rr}\\tab N= 54 /S= 4\\par "
    "r^2= \\tab 0.987\\par  eta: \\tab 606.5\\tab beta: \\tab 1.72\\par \\par ";

const tavlo::RichText& log_of_16_megabytes() {
  static const tavlo::RichText log = [] {
    std::string rtf = "{\\rtf1\\ansi\\fs20 ";
    while (rtf.size() < size) rtf += entry;
    return tavlo::RichText::from_rtf(rtf + "}");
  }();
  return log;
}

void read(benchmark::State& state) {
  const std::string rtf = log_of_16_megabytes().rtf();
  for (auto _ : state) benchmark::DoNotOptimize(tavlo::RichText::from_rtf(rtf));
}
BENCHMARK(read)->Unit(benchmark::kMillisecond);

void write(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(log_of_16_megabytes().rtf());
}
BENCHMARK(write)->Unit(benchmark::kMillisecond);

void append_100000_entries_each_with_a_copy_before(benchmark::State& state) {
  for (auto _ : state) {
    tavlo::RichText log;
    for (int i = 0; i < 100'000; ++i) {
      const tavlo::RichText before = log;
      log.append_rtf(entry);
      benchmark::DoNotOptimize(log.behind(before));
    }
  }
}
BENCHMARK(append_100000_entries_each_with_a_copy_before)->Unit(benchmark::kMillisecond);

}  // namespace
