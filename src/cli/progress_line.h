// Progress line: how far a long run is, on the last line of a terminal. It comes after two
// seconds, goes before anything else is written, and is nowhere where standard error is no
// terminal.
#pragma once

#include <cstddef>

namespace tavlo::cli {

/// While one lives, the line is shown.
class ProgressLine {
 public:
  explicit ProgressLine(bool is_wanted);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
};

/// Notes that one more of `total` (0: nobody knows how many) is done; `what` they are, in plural.
void count_progress(const char* what, std::size_t total = 0, std::size_t done = 1);

/// Clears the line, if it is there, until it is drawn again; for those who write to the terminal.
/// While one lives the line is not drawn.
class TerminalTurn {
 public:
  TerminalTurn();
  ~TerminalTurn();
  TerminalTurn(const TerminalTurn&) = delete;
  TerminalTurn& operator=(const TerminalTurn&) = delete;
};

}  // namespace tavlo::cli
