// RichText: the log as a document. It is stored as RTF, grows at its end and is
// read back as RTF or as plain text. Copies cost nothing.
#pragma once

#include <memory>
#include <optional>
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
  bool empty() const { return size_ == 0; }

  /// The whole document, with its head.
  std::string rtf() const;

  /// The text alone, UTF-8, lines separated by "\n".
  std::string plain() const;

  /// The plain text of what was added behind `earlier`, so that a view shows only that;
  /// nothing where this is no continuation of it.
  std::optional<std::string> plain_behind(const RichText& earlier) const;

  friend bool operator==(const RichText& a, const RichText& b) {
    return a.size_ == b.size_ && (a.text_ == b.text_ || a.body() == b.body());
  }

 private:
  std::string_view body() const { return std::string_view(*text_).substr(0, size_); }
  void append(std::string_view rtf);

  // Copies see one text, each up to its own end: it only grows behind the longest.
  std::shared_ptr<std::string> text_ = std::make_shared<std::string>();
  std::size_t size_ = 0;
};

/// UTF-8 text as RTF: line breaks become "\par ", characters with a meaning are escaped.
std::string rtf_text(std::string_view text);

/// The plain text (UTF-8) of an RTF document or fragment; destinations such as
/// font tables are left out. Broken RTF gives what can be read of it.
std::string rtf_to_plain(std::string_view rtf);

}  // namespace tavlo
