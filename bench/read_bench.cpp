// Reading a million lines: the notation in random and in ascending order, and
// comma-separated columns, each beside a bare read of the same bytes that only finds
// the times; and the data files of other programs.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "files/data_text.h"
#include "files/foreign_old_data.h"
#include "files/foreign_quelplot.h"
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

std::string old_data() {
  std::string text = "tavlo data\nxydata\n" + std::to_string(lines) + ",0\n";
  for (const double time : times()) text += tavlo::number_text(time, 6) + ",0.123456\n";
  return text + "end\n";
}

std::string quelplot() {
  std::string text =
      "quelplot_data2\n\n\n8\n\n\n1\n\n\n\n\n3\nSET_1\n" + std::to_string(lines) + "\n";
  for (const double time : times())
    text += "<P>" + tavlo::number_text(time, 6) + " 0.123456 1</P>\n";
  return text;
}

using ForeignReader = std::optional<tavlo::NumberedFault> (*)(std::string_view, tavlo::Project&);

void read_foreign(benchmark::State& state, ForeignReader reader, const std::string& text) {
  for (auto _ : state) {
    tavlo::Project project;
    project.data.push_back(tavlo::fuStandardData());
    project.fits.push_back(tavlo::fuStandard_Fit());
    project.charts.push_back(tavlo::fuStandard_Chart());
    if (reader(text, project)) state.SkipWithError("not read");
    benchmark::DoNotOptimize(project.data(1).rows.size());
  }
  state.SetItemsProcessed(state.iterations() * lines);
}

std::optional<tavlo::NumberedFault> read_first_set(std::string_view bytes,
                                                   tavlo::Project& project) {
  return tavlo::read_quelplot(bytes, 1, project);
}

BENCHMARK_CAPTURE(read_foreign, old_data, tavlo::read_old_data, old_data())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_foreign, quelplot, read_first_set, quelplot())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_bare, notation_in_random_order, notation(times()))
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, notation_in_random_order, notation(times()))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_bare, notation_in_ascending_order, ascending())
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, notation_in_ascending_order, ascending())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read_bare, comma_separated, columns(times()))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, comma_separated, columns(times()))->Unit(benchmark::kMillisecond);

}  // namespace
