// Line reader: the lines of standard input in handfuls, as they come: a program that sends
// one line and waits for its answer gets it. Memory is bounded whatever comes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// A handful of whole lines, kept in one text that a JSON parser may read beyond the end of.
struct Handful {
  std::string text;
  std::vector<std::string_view> lines;  ///< without their ends; a null view is a line too long
};

class LineReader {
 public:
  /// Longer lines are given as null views.
  static constexpr std::size_t longest_line = 64'000'000;

  /// The bytes that stand ready behind the last line of a handful.
  static constexpr std::size_t padding = 64;

  explicit LineReader(int file) : file_(file) {}

  /// Waits for lines. False at the end, and when reading fails.
  bool next(Handful& handful);

  /// 0, or the error of the system that has ended the reading.
  int error() const { return error_; }

 private:
  bool read_more();
  bool take_lines(Handful& handful);
  void take_end(Handful& handful);
  void skip_long_line();
  std::string_view waiting() const { return {buffer_.data() + start_, end_ - start_}; }

  int file_;
  std::string buffer_;
  std::size_t start_ = 0;  ///< of what waits in the buffer
  std::size_t end_ = 0;
  std::size_t searched_ = 0;  ///< from the start; no line ends there
  bool skipping_ = false;     ///< the rest of a line that was too long
  bool at_end_ = false;
  int error_ = 0;
};

}  // namespace tavlo::cli
