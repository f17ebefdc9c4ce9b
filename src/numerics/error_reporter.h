// ErrorReporter: turns the failure of a routine into a box and a log text, and
// `guarded`, the one form of an error handler. A routine with a handler is one
// expression: guarded(reporter, value after a failure, words, body).
#pragma once

#include <cstdint>
#include <initializer_list>
#include <new>
#include <string>
#include <utility>

#include "numerics/run_time_error.h"
#include "ports/clock.h"
#include "ports/prompts.h"

namespace tavlo {

/// Codes that a routine sets itself before it fails.
namespace error_code {
inline constexpr int none = 0;
inline constexpr int invalid_input = 1001;
inline constexpr int excessive_iterations = 1002;
inline constexpr int array_too_small = 1003;
inline constexpr int undefined_array = 1004;
inline constexpr int singular_matrix = 1005;
inline constexpr int matrix_problem = 1006;
}  // namespace error_code

/// State of the reports of one session. Field names are those of the log texts
/// and of the routines that fill them.
class ErrorReporter {
 public:
  ErrorReporter(Prompts& prompts, Clock& clock) : prompts_(prompts), clock_(clock) {}

  /// 0 shows every error; bits: 2 no box, 4 neither box nor log, 8 no box for a
  /// repeat within 25 s.
  int gErrMode = 0;
  int gErrCode = 0;   ///< pending code of the failing routine, see error_code
  int gErrCount = 0;  ///< iterations, shown with code 1002
  int gErrLast = 0;   ///< code of the last report
  std::string gErrDetail;
  std::string gErrTitle;
  std::string gErrLog;
  float gErrTime = 0;  ///< seconds since midnight at the last report

  /// Where the growth of gErrLog stops, in characters.
  std::int64_t log_limit = 2147479552;

  /// Adds each line and a line end to gErrDetail.
  void add_lines(std::initializer_list<std::string> lines);

  /// Completes, shows and logs the pending error; `error` is the run-time error
  /// behind it, or null.
  void Error_Chk_Show(const RunTimeError* error = nullptr);

 private:
  void complete_texts(const RunTimeError* error);
  bool box_is_wanted(int run_time_number, float now) const;
  void log_texts();

  Prompts& prompts_;
  Clock& clock_;
};

/// Runs `body`. A RunTimeError in it (or exhausted memory) is reported: `words`
/// is called first, to add its lines to gErrDetail, and `fallback` is returned.
template <class Result, class Words, class Body>
Result guarded(ErrorReporter& reporter, Result fallback, Words&& words, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const RunTimeError& error) {
    std::forward<Words>(words)(reporter);
    reporter.Error_Chk_Show(&error);
  } catch (const std::bad_alloc&) {
    std::forward<Words>(words)(reporter);
    const RunTimeError error(run_time::out_of_memory);
    reporter.Error_Chk_Show(&error);
  }
  return fallback;
}

/// The same for a routine without a result.
template <class Words, class Body>
void guarded(ErrorReporter& reporter, Words&& words, Body&& body) {
  guarded(reporter, 0, std::forward<Words>(words), [&] {
    body();
    return 0;
  });
}

/// Words for the usual handler: each on a line, as a prefix and a place. Literals
/// are kept as pointers, so that a call that succeeds builds no strings.
template <class... Lines>
auto error_words(Lines... lines) {
  return
      [... lines = std::move(lines)](ErrorReporter& reporter) { reporter.add_lines({lines...}); };
}

}  // namespace tavlo
