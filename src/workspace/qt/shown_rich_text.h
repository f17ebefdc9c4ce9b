// Shown rich text: keeps a document of Qt and a rich text alike, in both directions, without
// going through all of it: a log may have a million lines. Marks at the beginnings of lines tie
// places of the one to places of the other; what stands between two marks is replaced whole. Of
// a very long text only a part is in the document, as Qt lays out slowly: the end at first, and
// whichever part it is asked for.
#pragma once

#include <QObject>
#include <QTextDocument>
#include <vector>

#include "workspace/qt/rich_text_document.h"

namespace tavlo {

class ShownRichText : public QObject {
  Q_OBJECT

 public:
  explicit ShownRichText(QTextDocument& document);

  /// What the document shows, but for what the person has changed since.
  const RichText& text() const { return text_; }

  /// Changes the document where the text is another one. What the person has changed must be
  /// taken first; it stays where the text only got longer.
  void show(const RichText& text);

  /// How much of the text stands before what the document shows.
  std::size_t hidden() const { return marks_.front().place; }

  /// Where in the text ends what the document shows.
  std::size_t end() const { return end_; }

  /// Shows the part of the text around a place, which is hidden so far.
  void reveal(std::size_t place);

  /// The position in the document of the last mark at or before a place that is shown.
  int position_before(std::size_t place) const;
  /// The position of the first mark at or behind it, or the document's end.
  int position_behind(std::size_t place) const;

  /// True when the person has changed the document since its text was last taken.
  bool is_edited() const { return edited_; }

  /// The text with what the person has changed. Where all that was shown has gone at once, what
  /// is hidden goes too.
  const RichText& take();

 signals:
  void edited();

 private:
  struct Mark {
    QTextCursor at;
    std::size_t place = 0;  ///< in the text
  };
  using Marks = std::vector<Mark>;

  void note_change(int position, int removed, int added);
  void start_anew(const RichText& text, std::size_t begin, std::size_t end);
  void append(const RichText& text);
  void replace(const RichText& text);
  void insert(int position, const RichText& text, std::size_t begin, std::size_t end, Marks& marks);
  Mark mark_at(int position, std::size_t place) const;

  QTextDocument& document_;
  RichText text_;
  Marks marks_;
  std::size_t end_ = 0;
  bool is_own_change_ = false;
  bool edited_ = false;
  bool replaces_all_ = false;  ///< what is hidden too
  int first_ = 0;              ///< of what the person has changed, as it stands now
  int last_ = 0;
};

}  // namespace tavlo
