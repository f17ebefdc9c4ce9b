// RichText: the log as a document of styled text and tables. It grows at its end, is read
// from RTF and written as RTF or as plain text. Copies cost nothing, and one may be read on
// another thread while this one grows.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/rich_text_content.h"

namespace tavlo {

class RichText {
 public:
  RichText() = default;
  explicit RichText(RichTextContent content);

  /// The document of a file or the clipboard, see rtf_reader. What is no RTF is taken as
  /// plain text: UTF-8, or the ANSI code page where it is none.
  static RichText from_rtf(std::string_view document);

  /// Adds a piece of RTF at the end, "\par " being a line end. Styles and tables that are
  /// open at its end end there.
  void append_rtf(std::string_view fragment);

  /// Adds UTF-8 text at the end, in the log's own style.
  void append_plain(std::string_view text);

  /// Adds another document at the end; where it begins with a table, on a line of its own.
  void append(const RichText& added);

  /// Ends the last line where a person has left it open, so that an entry stands on its own.
  void end_line();

  void clear() { *this = {}; }
  bool empty() const { return size_ == 0; }

  /// How much there is; no measure of what is seen. Places in the document are such sizes.
  std::size_t size() const { return size_; }

  /// The whole document as RTF, see rtf_writer.
  std::string rtf() const;

  /// The text alone, UTF-8, lines separated by "\n" and cells by tabs.
  std::string plain() const;

  /// True where this is `earlier` with or without something behind it.
  bool continues(const RichText& earlier) const;

  /// What was added behind `earlier`, so that a view shows only that; nothing where this is
  /// no continuation of it.
  std::optional<RichText> behind(const RichText& earlier) const;

  /// The document with another part in the place of what stands between two places.
  RichText replaced(std::size_t begin, std::size_t end, const RichText& part) const;

  /// What stands between two places.
  RichText part(std::size_t begin, std::size_t end) const;

  /// Places from `begin` on at which lines begin outside tables, `every` lines apart.
  std::vector<std::size_t> line_begins(std::size_t begin, int every) const;

  /// True where both end alike from `begin`, or `other_begin`, on.
  bool same_back(std::size_t begin, const RichText& other, std::size_t other_begin) const;

  /// True where the first `end` of both look the same.
  bool same_front(const RichText& other, std::size_t end) const;

  /// Shows the document from its beginning. The visitor must not change it meanwhile.
  void visit(RichTextVisitor& visitor) const;

  friend bool operator==(const RichText& a, const RichText& b) {
    return a.size_ == b.size_ && b.continues(a);
  }

 private:
  struct Shared {
    RichTextContent content;
    std::mutex at_work;
  };

  void append(const RichTextContent& added);
  template <class Change>
  void grow(Change change);

  // Copies see one content, each up to its own end: it only grows behind the longest.
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::size_t size_ = 0;
};

}  // namespace tavlo
