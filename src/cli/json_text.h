// JSON text: writes JSON straight into a text. A batch prints tens of thousands of objects
// a second, which leaves no time for a tree of values.
#pragma once

#include <string>
#include <string_view>

namespace tavlo::cli {

class JsonText {
 public:
  /// Writes to the end of `text`, which holds whole lines.
  explicit JsonText(std::string& text) : text_(text) {}

  /// Starts an object or a list: '{' or '['.
  JsonText& open(char bracket);
  JsonText& close(char bracket);

  /// Names the value that follows. Names are plain words.
  JsonText& key(std::string_view name);

  /// A number in the shortest form that reads back equal, 20 and not 2e+01; null when it is
  /// not finite.
  JsonText& number(double value);

  /// A stored 32-bit number as its shortest decimal: 54.3, not 54.299999.
  JsonText& number(float value);
  JsonText& integer(long long value);
  JsonText& null();

  /// Control characters are escaped, also those that JSON would allow; bytes that are no
  /// UTF-8 become U+FFFD.
  JsonText& string(std::string_view value);

  /// A value that is JSON already.
  JsonText& raw(std::string_view json);

 private:
  void separate();

  std::string& text_;
};

/// A stored 32-bit number as its shortest decimal.
double shortest_decimal(float value);

/// {"file", "error"} and a line end, for a file that can't be read.
std::string error_line(std::string_view file, std::string_view error);

}  // namespace tavlo::cli
