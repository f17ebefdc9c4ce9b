// RTF scanner: the signs that RTF is made of: braces, control words, control symbols and
// text. It knows nothing of what they mean but of those that hide other signs.
#pragma once

#include <string_view>

namespace tavlo {

struct RtfSign {
  enum class Kind { end, open, close, word, symbol, byte, text };

  Kind kind = Kind::end;
  std::string_view text = {};  ///< the word's letters, or text without a line break in it
  bool has_number = false;     ///< of a word
  int number = 0;              ///< of a word, or the byte of a \'hh; limited to what an int holds
  char symbol = '\0';
};

class RtfScanner {
 public:
  explicit RtfScanner(std::string_view rtf) : rest_(rtf) {}

  /// The next sign; the end again and again where there is none left. Line breaks are skipped,
  /// and so are the bytes that a \bin counts, as far as there are some.
  RtfSign next();

  /// Skips these characters if they stand here.
  bool skip(std::string_view characters);

  /// Goes behind the brace that closes the group that we are in, or to the end.
  void leave_group();

 private:
  RtfSign control();
  RtfSign word();
  RtfSign byte();

  std::string_view rest_;
};

}  // namespace tavlo
