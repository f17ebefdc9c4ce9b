#include "cli/macro_results.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace tavlo::cli {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view heading_start = "Tavlo Results for ";
constexpr const char* line_end = "\r\n";

std::optional<std::string> rename_file(const std::string& from, const std::string& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (!error) return std::nullopt;
  return from + " can't be given the name " + to + ": " + error.message();
}

bool is_something_else(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_regular_file(status);
}

}  // namespace

std::string work_name(const std::string& result) {
  std::string work = result;
  const bool ends_in_stop = work.size() > 1 && work.back() == '.';
  work[work.size() - (ends_in_stop ? 2 : 1)] = '~';
  return work;
}

/// The rows of a run that was killed: they are the only ones where the result is not there.
bool MacroResults::is_leftover(const std::string& work) {
  std::string start(heading_start.size(), '\0');
  std::ifstream file(work, std::ios::binary);
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return start == heading_start;
}

std::optional<std::string> MacroResults::take(const std::string& result) {
  if (result == result_) return std::nullopt;
  if (auto fault = finish()) return fault;
  if (result.empty()) return "the job names no result file";
  const std::string work = work_name(result);
  if (work == result) return result + " is the name of a work file, not of a result";
  for (const std::string& path : {result, work})
    if (is_something_else(path)) return path + " is not a regular file";
  if (files_.exists(result)) {
    if (files_.exists(work))
      if (const FileResult removed = files_.remove(work); !removed)
        return work + ": " + removed.message;
    if (auto fault = rename_file(result, work)) return fault;
  } else if (files_.exists(work) && !is_leftover(work)) {
    if (const FileResult removed = files_.remove(work); !removed)
      return work + ": " + removed.message;
  }
  result_ = result;
  return std::nullopt;
}

std::optional<std::string> MacroResults::append(const std::string& result, std::string_view row) {
  if (auto fault = take(result)) return fault;
  const std::string work = work_name(result);
  std::string text = files_.exists(work) ? "" : heading_ + line_end;
  text += std::string(row) + line_end;
  if (const FileResult done = files_.append(work, text); !done) return result + ": " + done.message;
  return std::nullopt;
}

std::optional<std::string> MacroResults::finish() {
  const std::string result = std::exchange(result_, {});
  if (result.empty() || !files_.exists(work_name(result))) return std::nullopt;
  return rename_file(work_name(result), result);
}

}  // namespace tavlo::cli
