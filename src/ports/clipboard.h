// Clipboard: text that goes to and comes from other programs.
#pragma once

#include <string>

namespace tavlo {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// The text on the clipboard as UTF-8; empty when there is none.
  virtual std::string text() = 0;

  /// Puts `plain` (UTF-8) and, unless it is empty, `rtf` on the clipboard.
  virtual void set_text(const std::string& plain, const std::string& rtf) = 0;
};

}  // namespace tavlo
