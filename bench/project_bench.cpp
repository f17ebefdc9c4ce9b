// Opening and saving: a project of a million points, and one of 200 sets with 5 fits each,
// beside a bare read and a bare write of the same bytes.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "files/disk_files.h"
#include "files/project_file.h"
#include "project/fit_records.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

DataSet data_of(test::RandomNumbers& random, int points, std::int32_t id) {
  DataSet data = fuStandardData();
  data.UniqueId = id;
  data.Title = "Data" + std::to_string(id);
  data.ModeNames.push_back("seal");
  for (int i = 0; i < points; ++i) {
    SheetRow row;
    row.time = test::to_digits(random.weibull(2, 1000), 6);
    const bool failed = i % 5 != 0;
    (failed ? row.failures : row.suspensions) = 1;
    row.mode = failed ? 1 : 0;
    row.set_given(sheet_column::x, true);
    row.set_given(failed ? sheet_column::fails : sheet_column::susps, true);
    if (i % 100 == 0) row.set_text(sheet_column::comment, "returned, tag " + std::to_string(i));
    data.rows.push_back(row);
  }
  data.reading = DataReading(data.rows, RankKind::benard, false, 1);
  return data;
}

Project project_of(int sets, int points, int fits) {
  test::RandomNumbers random(11);
  Project project;
  Chart chart = fuStandard_Chart();
  chart.UniqueId = 3 * sets + 1;
  for (int i = 1; i <= sets; ++i) {
    project.data.push_back(data_of(random, points, i));
    FitSet set = fuStandard_Fit();
    set.UniqueId = sets + i;
    set.Title = "Fit" + std::to_string(i);
    set.DataIds.push_back(i);
    set.nDataIds = 1;
    for (int k = 0; k < fits; ++k) {
      const Life life = test::random_life(random, model_code::weibull5c);
      FitRequest request;
      request.model = life.model;
      request.method = method_code::mle;
      Fit fit;
      fit.life = life;
      fit.quality = -17.5 * k;
      set.Fits.push_back(record_of(request, fit, {}, 0));
    }
    set.nFits = fits;
    project.fits.push_back(set);
  }
  project.charts.push_back(chart);
  return project;
}

const Project& large() {
  static const Project project = project_of(1, 1'000'000, 1);
  return project;
}

const Project& many() {
  static const Project project = project_of(200, 100, 5);
  return project;
}

std::string bytes_of(const Project& project) {
  ProjectBytes written;
  if (const auto fault = write_project(project, written))
    throw std::runtime_error(fault->fault.what);
  return written.bytes;
}

std::string file_of(const Project& project) {
  const std::string path = "/tmp/tavlo-bench-" + std::to_string(::getpid()) + ".tavlo";
  DiskFiles().write_whole(path, bytes_of(project));
  return path;
}

double peak_megabytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void open(benchmark::State& state, const Project& (*make)()) {
  const std::string path = file_of(make());
  for (auto _ : state) {
    std::string bytes;
    Project project;
    if (!DiskFiles().read_whole(path, largest_project_file, bytes) || read_project(bytes, project))
      state.SkipWithError("not read");
    benchmark::DoNotOptimize(project.data(1).rows.size());
  }
  DiskFiles().remove(path);
}

void save(benchmark::State& state, const Project& (*make)()) {
  const std::string path = file_of(make());
  for (auto _ : state)
    if (!DiskFiles().write_whole(path, bytes_of(make()))) state.SkipWithError("not written");
  DiskFiles().remove(path);
}

/// The least that a reader and a writer do.
void copy_bytes(benchmark::State& state, const Project& (*make)()) {
  const std::string path = file_of(make());
  for (auto _ : state) {
    std::string bytes;
    DiskFiles().read_whole(path, largest_project_file, bytes);
    DiskFiles().write_whole(path, bytes);
  }
  DiskFiles().remove(path);
}

// The peak of a program that only opens the file: run it alone, with
// --benchmark_filter=peak, in a process that has made no project. FILE is in TAVLO_PROJECT.
void peak_of_opening(benchmark::State& state) {
  const char* const path = std::getenv("TAVLO_PROJECT");
  if (!path) return state.SkipWithError("TAVLO_PROJECT names no file");
  for (auto _ : state) {
    std::string bytes;
    Project project;
    if (!DiskFiles().read_whole(path, largest_project_file, bytes) || read_project(bytes, project))
      state.SkipWithError("not read");
    state.counters["read_MB"] = peak_megabytes();
    ProjectBytes written;
    if (write_project(project, written)) state.SkipWithError("not written");
    state.counters["read_and_written_MB"] = peak_megabytes();
  }
}

BENCHMARK_CAPTURE(copy_bytes, a_million_points, large)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, a_million_points, large)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, a_million_points, large)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(copy_bytes, 200_sets, many)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, 200_sets, many)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, 200_sets, many)->Unit(benchmark::kMillisecond);
BENCHMARK(peak_of_opening)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
