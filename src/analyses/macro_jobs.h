// Macro jobs: the jobs of a macro file (.vkm), a plain text that older programs write too. It
// is read item by item: a number ends at a blank, a comma or the end of its line, a text at a
// comma or the end of its line, or stands in quotes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tavlo {

struct MacroJob {
  long line = 0;              ///< of its first item, from 1
  std::int16_t size = 0;      ///< parameters of the model, which name it: 2, 3, 4, 5 or 7
  std::int16_t transfer = 0;  ///< 1 or 2: how an older solver held its parameters; ignored
  std::int16_t method = 0;    ///< 1 X on Y, 2 maximum likelihood, 3 Y on X
  std::string data_file = {};
  std::string result_file = {};
  int error = 0;  ///< run-time error of an item that is no such number; 0 is none
};

class MacroReader {
 public:
  /// Gives the next line without its end; false behind the last.
  using NextLine = std::function<bool(std::string& line)>;

  explicit MacroReader(NextLine next_line) : next_line_(std::move(next_line)) {}

  /// Nothing at the end of the text, also in the middle of a job.
  std::optional<MacroJob> next();

 private:
  bool more();
  bool read_number(std::int16_t& number, int& error);
  bool read_text(std::string& text);
  std::string quoted_text();
  void end_item();

  NextLine next_line_;
  std::string rest_;  ///< of the present line
  long line_ = 0;
};

}  // namespace tavlo
