// Interruption: what a run does when it is told to end (Ctrl-C, kill): it ends at once,
// but never in the middle of writing a file.
#pragma once

namespace tavlo::cli {

/// SIGINT and SIGTERM end the run with 128 + their number; a reader that goes away is an
/// error of writing, no signal.
void prepare_for_interruption();

/// SIGINT and SIGTERM ask the run to end in order. A second one, or two seconds, end it at
/// once, but never in the middle of writing a file.
void prepare_for_break();

/// Whether the run was asked to end.
bool break_wanted();

/// While one lives, an ending waits until the file stands.
class Uninterrupted {
 public:
  Uninterrupted();
  ~Uninterrupted();
  Uninterrupted(const Uninterrupted&) = delete;
  Uninterrupted& operator=(const Uninterrupted&) = delete;
};

}  // namespace tavlo::cli
