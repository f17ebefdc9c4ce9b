#include "analyses/macro_jobs.h"

#include <cmath>

#include "numerics/number_text.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

constexpr const char* white = " \t";

std::string without_ends(const std::string& text) {
  const std::size_t first = text.find_first_not_of(white);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(white) - first + 1);
}

/// An item that is not there counts as 0.
std::int16_t whole_number(const std::string& item, int& error) {
  const auto number = item.empty() ? 0.0 : parse_number(item);
  if (!number) {
    error = run_time::type_mismatch;
  } else if (!(std::abs(*number) <= INT16_MAX)) {
    error = run_time::overflow;
  } else {
    return static_cast<std::int16_t>(std::nearbyint(*number));
  }
  return 0;
}

}  // namespace

/// Goes to the next line that holds anything, where the present one is used up.
bool MacroReader::more() {
  while (rest_.find_first_not_of(white) == rest_.npos) {
    if (!next_line_(rest_)) return false;
    ++line_;
  }
  rest_.erase(0, rest_.find_first_not_of(white));
  return true;
}

/// A comma behind an item belongs to it.
void MacroReader::end_item() {
  rest_.erase(0, std::min(rest_.find_first_not_of(white), rest_.size()));
  if (rest_.starts_with(',')) rest_.erase(0, 1);
}

bool MacroReader::read_number(std::int16_t& number, int& error) {
  if (!more()) return false;
  const std::size_t end = std::min(rest_.find_first_of(" \t,"), rest_.size());
  number = whole_number(rest_.substr(0, end), error);
  rest_.erase(0, end);
  end_item();
  return true;
}

std::string MacroReader::quoted_text() {
  const std::size_t end = std::min(rest_.find('"', 1), rest_.size());
  const std::string text = rest_.substr(1, end - 1);
  rest_.erase(0, end + 1);
  rest_.erase(0, std::min(rest_.find(','), rest_.size()));
  return text;
}

bool MacroReader::read_text(std::string& text) {
  if (!more()) return false;
  if (rest_.starts_with('"')) {
    text = without_ends(quoted_text());
  } else {
    const std::size_t end = std::min(rest_.find(','), rest_.size());
    text = without_ends(rest_.substr(0, end));
    rest_.erase(0, end);
  }
  end_item();
  return true;
}

std::optional<MacroJob> MacroReader::next() {
  MacroJob job;
  if (!more()) return std::nullopt;
  job.line = line_;
  for (std::int16_t* number : {&job.size, &job.transfer, &job.method})
    if (!read_number(*number, job.error)) return std::nullopt;
  if (!read_text(job.data_file)) return std::nullopt;
  if (const std::size_t blank = job.data_file.find(' '); blank != std::string::npos) {
    job.result_file = without_ends(job.data_file.substr(blank));
    job.data_file = without_ends(job.data_file.substr(0, blank));
  } else if (!read_text(job.result_file)) {
    return std::nullopt;
  }
  return job;
}

}  // namespace tavlo
