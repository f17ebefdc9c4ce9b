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

/// One text in the forms that programs ask for; an empty form is not there.
struct ClipboardText {
  std::string plain;  ///< UTF-8
  std::string rtf;
  std::string html;  ///< UTF-8

  friend bool operator==(const ClipboardText&, const ClipboardText&) = default;
};

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// The text on the clipboard as UTF-8; empty when there is none.
  virtual std::string text() = 0;

  /// True when the text is longer than what is taken in of it (largest_pasted_text). To be
  /// asked before the text is.
  virtual bool is_too_long() = 0;

  /// The text on the clipboard in all the forms there are, but those that are too long.
  virtual ClipboardText rich_text() = 0;

  /// True when there is a picture and no text: then there is something to say to a
  /// person who pastes it as text.
  virtual bool holds_only_picture() = 0;

  /// Puts a text on the clipboard.
  virtual void set_text(const ClipboardText& text) = 0;

  /// Puts one picture in all its forms on the clipboard, the best one first;
  /// false when the clipboard can't be had.
  virtual bool set_picture(const std::vector<ClipboardForm>& forms) = 0;
};

}  // namespace tavlo
