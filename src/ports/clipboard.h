// Clipboard: text and pictures that go to and come from other programs.
#pragma once

#include <string>
#include <vector>

namespace tavlo {

/// One form of a picture, under the name (a MIME type) that programs ask for.
struct ClipboardForm {
  std::string mime_type;
  std::string bytes;
};

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// The text on the clipboard as UTF-8; empty when there is none.
  virtual std::string text() = 0;

  /// Puts `plain` (UTF-8) and, unless it is empty, `rtf` on the clipboard.
  virtual void set_text(const std::string& plain, const std::string& rtf) = 0;

  /// Puts one picture in all its forms on the clipboard, the best one first;
  /// false when the clipboard can't be had.
  virtual bool set_picture(const std::vector<ClipboardForm>& forms) = 0;
};

}  // namespace tavlo
