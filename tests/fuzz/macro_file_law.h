// The law of macro files: any bytes are read, in ascending lines; jobs that are written are read
// back unchanged.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "analyses/macro_jobs.h"
#include "analyses/macro_row.h"

namespace tavlo::test {

inline std::vector<MacroJob> macro_jobs_of(std::string_view bytes) {
  std::istringstream lines{std::string(bytes)};
  MacroReader reader(
      [&](std::string& line) { return static_cast<bool>(std::getline(lines, line)); });
  std::vector<MacroJob> jobs;
  while (const auto job = reader.next()) jobs.push_back(*job);
  return jobs;
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_macro_law(std::string_view bytes) {
  std::string text;
  long line = 1, written = 0;
  for (const MacroJob& job : macro_jobs_of(bytes)) {
    if (job.line < line) return "a job begins before the one in front of it";
    line = job.line;
    if (job.error != 0 && request_of(job)) return "a number that is none asks for a fit";
    if (job.data_file.find(' ') != job.data_file.npos) return "a blank in a data file's name";
    if ((job.data_file + job.result_file).find_first_of("\"\n") != std::string::npos) continue;
    const std::string again = std::to_string(job.size) + ',' + std::to_string(job.transfer) + '\n' +
                              std::to_string(job.method) + " \"" + job.data_file + "\",\"" +
                              job.result_file + "\"\n";
    const std::vector<MacroJob> read = macro_jobs_of(again);
    if (read.size() != 1) return "a written job is read as another number of jobs";
    if (read[0].size != job.size || read[0].method != job.method ||
        read[0].data_file != job.data_file || read[0].result_file != job.result_file)
      return "a written job is read otherwise";
    text += again;
    ++written;
  }
  return static_cast<long>(macro_jobs_of(text).size()) == written ? "" : "jobs are lost";
}

}  // namespace tavlo::test
