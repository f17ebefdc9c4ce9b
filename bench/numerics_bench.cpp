// Cost of the numerical routines that run once or more for each point.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "numerics/elementary.h"
#include "numerics/normal.h"
#include "numerics/number_reading.h"
#include "numerics/number_text.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

std::vector<double> uniform_values(std::size_t count) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> value(1e-9, 1);
  std::vector<double> values(count);
  for (double& each : values) each = value(random);
  return values;
}

/// Runs `routine` over a thousand values, one to a turn.
template <class Value, class Routine>
void over(benchmark::State& state, const std::vector<Value>& values, Routine routine) {
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(routine(values[at]));
    at = at + 1 < values.size() ? at + 1 : 0;
  }
}

void normal_quantile(benchmark::State& state) {
  test::TestWorld world;
  over(state, uniform_values(1000), [&](double p) { return fd_NormZ(world.session.errors, p); });
}

void normal_probability(benchmark::State& state) {
  test::TestWorld world;
  over(state, uniform_values(1000),
       [&](double p) { return fd_NormCDF(world.session.errors, 6 * p); });
}

void rounding_to_digits(benchmark::State& state) {
  test::TestWorld world;
  over(state, uniform_values(1000), [&](double x) { return fd_Round(world.session.errors, x, 6); });
}

std::vector<std::string> number_texts() {
  std::vector<std::string> texts;
  for (const double value : uniform_values(1000)) texts.push_back(number_text(1000 * value, 7));
  return texts;
}

void reading_typed_text(benchmark::State& state) {
  test::TestWorld world;
  over(state, number_texts(),
       [&](const std::string& t) { return fd_Str2Dbl(world.session.errors, t); });
}

void parsing_a_number(benchmark::State& state) {
  over(state, number_texts(), [](const std::string& text) { return parse_number(text); });
}

void writing_a_number(benchmark::State& state) {
  over(state, uniform_values(1000), [](double value) { return number_text(value); });
}

void writing_by_a_pattern(benchmark::State& state) {
  over(state, uniform_values(1000), [](double value) { return format_number(value, "0.0000"); });
}

BENCHMARK(normal_quantile);
BENCHMARK(normal_probability);
BENCHMARK(rounding_to_digits);
BENCHMARK(reading_typed_text);
BENCHMARK(parsing_a_number);
BENCHMARK(writing_a_number);
BENCHMARK(writing_by_a_pattern);

}  // namespace
}  // namespace tavlo
