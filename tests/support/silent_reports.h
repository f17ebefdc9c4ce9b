// SilentReports: an error reporter for laws over many inputs, where only the
// result counts. Boxes go nowhere.
#pragma once

#include "numerics/error_reporter.h"

namespace tavlo::test {

class SilentReports {
  struct NoPrompts : Prompts {
    BoxAnswer show(const Box&) override { return BoxAnswer::ok; }
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
  NoPrompts prompts_;
  StoppedClock clock_;

 public:
  ErrorReporter errors{prompts_, clock_};
};

}  // namespace tavlo::test
