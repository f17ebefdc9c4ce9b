// Unheard reports: for questions that a pointer asks at every move. What fails
// there has no answer; a box or a line of the log would be a nuisance.
#pragma once

#include "numerics/error_reporter.h"

namespace tavlo {

class UnheardReports {
 public:
  UnheardReports() { errors.gErrMode = neither_box_nor_log; }
  UnheardReports(const UnheardReports&) = delete;
  UnheardReports& operator=(const UnheardReports&) = delete;

  static constexpr int neither_box_nor_log = 4;

 private:
  struct DeafPrompts : Prompts {
    BoxAnswer show(const Box&) override { return BoxAnswer::cancel; }
    std::optional<std::string> ask_line(const std::string&, const std::string&,
                                        const std::string&) override {
      return std::nullopt;
    }
    std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }
  };
  struct StoppedClock : Clock {
    double seconds_since_midnight() override { return 0; }
    DateTime now() override { return {}; }
    double day_count() override { return 0; }
    double steady_seconds() override { return 0; }
  };

  StoppedClock clock_;

 public:
  DeafPrompts prompts;
  ErrorReporter errors{prompts, clock_};
};

}  // namespace tavlo
