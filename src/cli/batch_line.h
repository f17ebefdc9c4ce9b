// Batch line: one JSON object on a line, read into rows and questions.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"

namespace tavlo::cli {

struct BatchLine {
  std::string id = "null";  ///< as JSON
  std::vector<SampleRow> rows;
  FitQuestions questions;
};

/// Reads lines; keeps its memory from one to the next.
class BatchLineParser {
 public:
  BatchLineParser();
  ~BatchLineParser();

  /// What is wrong with the line, in the user's words; nothing when all is well. 64 bytes
  /// behind the text must be readable.
  std::optional<std::string> read(std::string_view text, BatchLine& line);

 private:
  struct Memory;
  std::unique_ptr<Memory> memory_;
};

}  // namespace tavlo::cli
