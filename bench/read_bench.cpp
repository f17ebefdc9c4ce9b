// Reading a million lines: the notation in random and in ascending order, and
// comma-separated columns, each beside a bare read of the same bytes that only finds
// the times.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "files/data_text.h"
#include "numerics/number_text.h"

namespace {

constexpr int lines = 1'000'000;

/// Weibull times, every fifth a suspension in the notation.
std::vector<double> times() {
  std::mt19937_64 random(1);
  std::weibull_distribution<double> life(2.0, 1000.0);
  std::vector<double> list(lines);
  for (double& time : list) time = life(random);
  return list;
}

std::string notation(const std::vector<double>& list) {
  std::string text;
  int i = 0;
  for (const double time : list)
    text += (++i % 5 == 0 ? ">" : "") + tavlo::number_text(time, 6) + "\n";
  return text;
}

std::string columns(const std::vector<double>& list) {
  std::string text = "time,status,count\n";
  int i = 0;
  for (const double time : list)
    text += tavlo::number_text(time, 6) + (++i % 5 == 0 ? ",S,1\n" : ",F,1\n");
  return text;
}

void read(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    tavlo::DataRows data;
    if (tavlo::read_data_rows(text, {}, data)) state.SkipWithError("not read");
    benchmark::DoNotOptimize(data.rows.data());
  }
  state.SetItemsProcessed(state.iterations() * lines);
}

/// The least that a reader does: from_chars on the front of each line.
void read_bare(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    std::vector<float> list;
    const char* const end = text.data() + text.size();
    const char* line = std::find(text.data(), end, '\n') + 1;  // one may be a header
    while (line < end) {
      float time = 0;
      const char* const behind = std::from_chars(line + (*line == '>' ? 1 : 0), end, time).ptr;
      list.push_back(time);
      const auto rest = static_cast<std::size_t>(end - behind);
      line = static_cast<const char*>(std::memchr(behind, '\n', rest)) + 1;
    }
    if (list.size() + 1 < lines) state.SkipWithError("not read");
    benchmark::DoNotOptimize(list.data());
  }
  state.SetItemsProcessed(state.iterations() * lines);
}

std::string ascending() {
  std::vector<double> list = times();
  std::sort(list.begin(), list.end());
  return notation(list);
}

BENCHMARK_CAPTURE(read_bare, notation_in_random_order, notation(times()))
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, notation_in_random_order, notation(times()))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_bare, notation_in_ascending_order, ascending())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, notation_in_ascending_order, ascending())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_bare, comma_separated, columns(times()))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, comma_separated, columns(times()))->Unit(benchmark::kMillisecond);

}  // namespace
