// Reading a million lines: the notation in random and in ascending order, and
// comma-separated columns.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
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
    tavlo::DataSet data;
    if (tavlo::read_data_text(text, {}, data)) state.SkipWithError("not read");
    benchmark::DoNotOptimize(data.Points.data());
  }
  state.SetItemsProcessed(state.iterations() * lines);
}

void notation_in_random_order(benchmark::State& state) { read(state, notation(times())); }

void notation_in_ascending_order(benchmark::State& state) {
  std::vector<double> list = times();
  std::sort(list.begin(), list.end());
  read(state, notation(list));
}

void comma_separated(benchmark::State& state) { read(state, columns(times())); }

BENCHMARK(notation_in_random_order)->Unit(benchmark::kMillisecond);
BENCHMARK(notation_in_ascending_order)->Unit(benchmark::kMillisecond);
BENCHMARK(comma_separated)->Unit(benchmark::kMillisecond);

}  // namespace
