// Macro results: the files that the rows of a macro run are appended to. While a file grows it
// has a work name, so that no other program takes it for finished; it has its own name again
// once rows go to another file, and at the end of the run.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/cli_ports.h"

namespace tavlo::cli {

/// The result name with its last character changed to "~"; the one before it where the name
/// ends in a full stop.
std::string work_name(const std::string& result);

class MacroResults {
 public:
  /// `heading` is the first line of a new file.
  explicit MacroResults(std::string heading) : heading_(std::move(heading)) {}
  ~MacroResults() { finish(); }
  MacroResults(const MacroResults&) = delete;
  MacroResults& operator=(const MacroResults&) = delete;

  /// Appends a row to a result file. What is wrong where that can't be done; the file then ends
  /// where it did.
  std::optional<std::string> append(const std::string& result, std::string_view row);

  /// Gives the present file its own name. What is wrong where that can't be done.
  std::optional<std::string> finish();

 private:
  std::optional<std::string> take(const std::string& result);
  bool is_leftover(const std::string& work);

  std::string heading_;
  std::string result_;  ///< the present one; empty for none
  SafeFiles files_;
};

}  // namespace tavlo::cli
