// RichText: the log as a document. It is stored as RTF, grows at its end and is
// read back as RTF or as plain text.
#pragma once

#include <string>
#include <string_view>

namespace tavlo {

class RichText {
 public:
  /// Adds raw RTF at the end, "\par " being a line end.
  void append_rtf(std::string_view fragment);

  /// Adds UTF-8 text at the end; each line break becomes "\par ", and characters
  /// that mean something in RTF are escaped.
  void append_plain(std::string_view text);

  void clear();
  bool empty() const { return body_.empty(); }

  /// The whole document, with its head.
  std::string rtf() const;

  /// The text alone, UTF-8, lines separated by "\n".
  std::string plain() const;

  /// Counts the changes, so that a view knows what it has shown already.
  long changes() const { return changes_; }

  friend bool operator==(const RichText& a, const RichText& b) { return a.body_ == b.body_; }

 private:
  std::string body_;
  long changes_ = 0;
};

/// UTF-8 text as RTF: line breaks become "\par ", characters with a meaning are escaped.
std::string rtf_text(std::string_view text);

/// The plain text (UTF-8) of an RTF document or fragment; destinations such as
/// font tables are left out. Broken RTF gives what can be read of it.
std::string rtf_to_plain(std::string_view rtf);

}  // namespace tavlo
