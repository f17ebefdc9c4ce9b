// A library of a million rows: opened, and searched by words that are rare, common and in none.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "guidance/choice_lists.h"
#include "guidance/library.h"
#include "guidance/library_search.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

constexpr int rows = 1'000'000;

/// Rows of twenty fields, some 160 bytes each; every tenth has a comma in a field.
std::string data_text() {
  std::mt19937 random(1);
  const auto item = [&](std::size_t list) {
    const auto& items = choice_lists()[list].items;
    return std::string(items[random() % items.size()]);
  };
  std::string text;
  for (int i = 0; i < rows; ++i) {
    const std::string number = std::to_string(i);
    const std::vector<std::string> fields = {"/data/file" + number + ".tav",
                                             "Test " + number,
                                             "2026-11-21",
                                             item(0),
                                             item(1),
                                             item(2),
                                             item(3),
                                             item(4),
                                             "W; MLE",
                                             "-" + number,
                                             "",
                                             "hours",
                                             number,
                                             "1.7",
                                             "",
                                             i % 10 == 0 ? "tested twice, then replaced" : "",
                                             "",
                                             "",
                                             "",
                                             "20/5"};
    text += write_library_row(fields) + "\n";
  }
  return text;
}

test::MemoryFiles& files() {
  static test::MemoryFiles files;
  if (files.files.empty()) {
    Library library = default_library();
    library.definition.data_file = library.definition.reference_file = "library.csv";
    files.files["/lib/QMWbLibDef.txt"] = write_library_header(library.definition);
    files.files["/lib/library.csv"] = data_text();
  }
  return files;
}

void open(benchmark::State& state) {
  files();
  for (auto _ : state) benchmark::DoNotOptimize(open_library(files(), "/lib").library.rows.count());
}

void search(benchmark::State& state) {
  const char* const words[] = {"valve", "metering EROSION salt", "file999999", "e", "nowhere", "\"",
                               "twice,"};
  const Library library = open_library(files(), "/lib").library;
  const char* const word = words[state.range(0)];
  state.SetLabel(word);
  for (auto _ : state) {
    const auto found = find_library_rows(library.rows, library.first_row(), word);
    benchmark::DoNotOptimize(found.size());
    state.counters["found"] = static_cast<double>(found.size());
  }
}

BENCHMARK(open)->Unit(benchmark::kMillisecond);
BENCHMARK(search)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
