// The law of chart sections: whatever can be read can be written, and reading
// that back and writing it again gives the same bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/chart_section.h"
#include "numerics/error_reporter.h"
#include "numerics/unheard_reports.h"

namespace tavlo::test {

/// The section of a chart; nothing when it can't be written.
inline std::optional<std::string> section_of(const Chart& chart) {
  UnheardReports reports;
  ProjectWriter file;
  if (!RW_Chart(reports.errors, file, chart)) return std::nullopt;
  return file.bytes();
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_chart_law(std::string_view bytes) {
  const Chart before = fuStandard_Chart();
  Chart first = before;
  ProjectReader file(bytes);
  if (const auto fault = read_chart(file, first)) {
    if (!(first == before)) return "a fault has changed the chart";
    return fault->what.empty() ? "a fault without words" : "";
  }
  const auto written = section_of(first);
  if (!written) return "can't be written";
  Chart second = before;
  ProjectReader again(*written);
  if (const auto fault = read_chart(again, second))
    return "can't be read back: line " + std::to_string(fault->line) + ": " + fault->what;
  return section_of(second) == written ? "" : "changed from\n" + *written;
}

}  // namespace tavlo::test
