#include "numerics/error_reporter.h"

#include <string>

#include "numerics/date_text.h"

namespace tavlo {
namespace {

namespace mode_bit {
constexpr int no_box = 2;
constexpr int silent = 4;
constexpr int no_repeats = 8;
}  // namespace mode_bit

/// A report of the same error within this time is a repeat.
constexpr float repeat_seconds = 25;

struct CodeWords {
  int code;
  const char* detail;
  const char* title;
};

constexpr CodeWords code_words[] = {
    {error_code::invalid_input, "Invalid input", "Inputs out of bounds"},
    {error_code::excessive_iterations, "Excessive iterations", "Excessive iterations: "},
    {error_code::array_too_small, "Array too small to solve", "Array too small"},
    {error_code::undefined_array, "Undefined Array", "Undefined Array"},
    {error_code::singular_matrix, "Singular Matrix", "Singular Matrix cannot be solved"},
    {error_code::matrix_problem, "Matrix Problem", "Error in Matrix Solution"},
};

const CodeWords* find_code(int code) {
  for (const CodeWords& words : code_words)
    if (words.code == code) return &words;
  return nullptr;
}

}  // namespace

void ErrorReporter::add_lines(std::initializer_list<std::string> lines) {
  for (const std::string& line : lines) {
    gErrDetail += line;
    gErrDetail += '\n';
  }
}

void ErrorReporter::Error_Chk_Show(const RunTimeError* error) {
  const int run_time_number = error ? error->number() : 0;
  const auto now = static_cast<float>(clock_.seconds_since_midnight());
  complete_texts(error);
  // In the silent mode the code stays pending and the texts are kept, so that
  // they pile up until somebody looks at them or the mode changes.
  if (gErrMode & mode_bit::silent) {
    gErrTime = now;
    gErrLast = gErrCode;
    return;
  }
  if (box_is_wanted(run_time_number, now))
    prompts_.show({gErrTitle, gErrDetail, BoxIcon::exclamation, BoxButtons::ok});
  log_texts();
  gErrTime = now;
  gErrLast = gErrCode;
  gErrCode = error_code::none;
}

// A routine's own code says more than the number behind it, so it comes first.
void ErrorReporter::complete_texts(const RunTimeError* error) {
  if (const CodeWords* words = find_code(gErrCode)) {
    gErrDetail += words->detail;
    gErrTitle = words->title;
    if (gErrCode == error_code::excessive_iterations) gErrTitle += std::to_string(gErrCount);
  } else if (error && error->number() > 0) {
    gErrCode = error->number();
    gErrDetail += error->description();
    gErrTitle = "Error: " + std::to_string(error->number()) + " " + error->description();
  } else {
    gErrDetail += "Undetermined Error";
    gErrTitle = "Undetermined Error:  " + std::to_string(gErrCode);
  }
}

bool ErrorReporter::box_is_wanted(int run_time_number, float now) const {
  if (gErrMode & mode_bit::no_box) return false;
  if (!(gErrMode & mode_bit::no_repeats)) return true;
  // The timer starts again at midnight; a step back tells nothing of the time
  // that has passed and counts as a long one.
  const float passed = now - gErrTime;
  const bool recent = passed >= 0 && passed <= repeat_seconds;
  const bool same = gErrLast == gErrCode || gErrLast == run_time_number;
  return !(gErrLast >= 1 && recent && same);
}

void ErrorReporter::log_texts() {
  if (static_cast<std::int64_t>(gErrLog.size()) < log_limit)
    gErrLog += "\n\n" + format_date(clock_.now(), "yyyy-mm-dd hh:nn:ss") + "\n" + gErrTitle + "\n" +
               gErrDetail;
  gErrTitle.clear();
  gErrDetail.clear();
}

}  // namespace tavlo
