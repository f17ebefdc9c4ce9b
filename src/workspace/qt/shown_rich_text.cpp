#include "workspace/qt/shown_rich_text.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <algorithm>
#include <ranges>
#include <utility>

namespace tavlo {

namespace {

constexpr int lines_between_marks = 100;

// What a person reads back on a long day; Qt lays it out in a blink.
constexpr int lines_of_a_part = 1000;
constexpr std::size_t usual_parts = 20;
constexpr std::size_t most_parts = 25;
constexpr std::size_t parts_before = 10;  // of a part that is asked for

/// Where what is shown of a text begins.
std::size_t begin_of_shown(const RichText& text) {
  const std::vector<std::size_t> begins = text.line_begins(0, lines_of_a_part);
  return begins.size() > most_parts ? begins[begins.size() - usual_parts] : 0;
}

void remove(QTextDocument& document, int begin, int end) {
  QTextCursor cursor(&document);
  cursor.setPosition(begin);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
}

int end_of(const QTextDocument& document) { return document.characterCount() - 1; }

}  // namespace

ShownRichText::ShownRichText(QTextDocument& document) : document_(document), marks_{mark_at(0, 0)} {
  marks_[0].at.setKeepPositionOnInsert(true);
  document_.documentLayout();  // a document tells of changes only when it has one
  connect(&document_, &QTextDocument::contentsChange, this, &ShownRichText::note_change);
}

ShownRichText::Mark ShownRichText::mark_at(int position, std::size_t place) const {
  QTextCursor at(&document_);
  at.setPosition(position);
  return {at, place};
}

void ShownRichText::note_change(int position, int removed, int added) {
  if (is_own_change_) return;
  if (!edited_) {
    first_ = position;
    last_ = position + added;
  } else {
    first_ = std::min(first_, position);
    last_ = std::max(last_, position + removed) + added - removed;
  }
  // Who takes away all at once means the whole text, as who copies it does. A change of the font
  // takes away as much as it adds.
  const bool takes_all = position == 0 && removed > 0 && end_of(document_) <= added;
  replaces_all_ = (edited_ && replaces_all_) || (takes_all && removed != added);
  edited_ = true;
  emit edited();
}

const RichText& ShownRichText::take() {
  if (!edited_) return text_;
  if (std::exchange(replaces_all_, false)) {
    text_ = text_.part(hidden(), end_);
    end_ = text_.size();
    for (Mark& mark : marks_ | std::views::reverse) mark.place -= hidden();
  }
  const auto first_behind = std::partition_point(
      marks_.begin() + 1, marks_.end(), [&](const Mark& m) { return m.at.position() < first_; });
  const auto next = std::partition_point(first_behind, marks_.end(),
                                         [&](const Mark& m) { return m.at.position() <= last_; });
  const Mark& front = *std::prev(first_behind);
  const bool is_last = next == marks_.end();
  const std::size_t end = is_last ? end_ : next->place;
  const int end_position = is_last ? document_.characterCount() : next->at.position();
  const RichText part = rich_text_between(document_, front.at.position(), end_position);
  const std::size_t former = end - front.place;
  text_ = text_.replaced(front.place, end, part);
  for (auto mark = next; mark != marks_.end(); ++mark) mark->place += part.size() - former;
  end_ += part.size() - former;
  marks_.erase(first_behind, next);
  edited_ = false;
  return text_;
}

void ShownRichText::show(const RichText& text) {
  if (text == text_) return;
  const QScopedValueRollback own(is_own_change_, true);
  if (end_ < text_.size() || text_.empty() || !text.same_front(text_, hidden()))
    start_anew(text, begin_of_shown(text), text.size());
  else
    text.continues(text_) ? append(text) : replace(text);
  text_ = text;
  end_ = text.size();
}

void ShownRichText::reveal(std::size_t place) {
  const QScopedValueRollback own(is_own_change_, true);
  std::vector<std::size_t> parts = text_.line_begins(0, lines_of_a_part);
  if (parts.empty() || parts.front() != 0) parts.insert(parts.begin(), 0);
  const auto behind = std::upper_bound(parts.begin(), parts.end(), place);
  const auto at = static_cast<std::size_t>(behind - parts.begin()) - 1;
  const std::size_t first = at > parts_before ? at - parts_before : 0;
  const std::size_t last = first + usual_parts;
  const bool shows_end = last + most_parts - usual_parts >= parts.size();
  // Without the line end that parts it from what is hidden behind.
  start_anew(text_, parts[first], shows_end ? text_.size() : parts[last] - 1);
}

int ShownRichText::position_before(std::size_t place) const {
  const auto behind = std::partition_point(marks_.begin() + 1, marks_.end(),
                                           [&](const Mark& m) { return m.place <= place; });
  return std::prev(behind)->at.position();
}

int ShownRichText::position_behind(std::size_t place) const {
  const auto found = std::partition_point(marks_.begin(), marks_.end(),
                                          [&](const Mark& m) { return m.place < place; });
  return found == marks_.end() ? end_of(document_) : found->at.position();
}

void ShownRichText::start_anew(const RichText& text, std::size_t begin, std::size_t end) {
  edited_ = false;
  end_ = end;
  marks_.resize(1);
  marks_.front().place = begin;
  remove(document_, 0, end_of(document_));
  QTextCursor(&document_).setBlockFormat({});
  insert(0, text, begin, end, marks_);
}

void ShownRichText::append(const RichText& text) {
  insert(end_of(document_), text, text_.size(), text.size(), marks_);
}

void ShownRichText::replace(const RichText& text) {
  edited_ = false;
  const auto behind_front =
      std::partition_point(marks_.begin() + 1, marks_.end(),
                           [&](const Mark& m) { return text_.same_front(text, m.place); });
  const auto tail_of = [&](const Mark& m) { return text.size() - (text_.size() - m.place); };
  const auto front = std::prev(behind_front);
  auto back = std::partition_point(behind_front, marks_.end(), [&](const Mark& m) {
    return text_.size() - m.place > text.size() - front->place ||
           !text_.same_back(m.place, text, tail_of(m));
  });
  // The line in front of a tail may be another one: only from the next mark on it is known.
  if (back != marks_.end()) ++back;
  const bool is_last = back == marks_.end();
  const int begin = front->at.position();
  const std::size_t end = is_last ? text.size() : tail_of(*back);
  const QTextBlockFormat format =
      is_last ? QTextBlockFormat() : document_.findBlock(back->at.position()).blockFormat();
  remove(document_, begin, is_last ? end_of(document_) : back->at.position());
  QTextCursor(document_.findBlock(begin)).setBlockFormat(format);
  Marks marks(marks_.begin(), behind_front);
  if (is_last) {
    insert(begin, text, front->place, end, marks);
  } else {
    // What is inserted ends with a line end, which parts it from the tail.
    marks.back().at.setKeepPositionOnInsert(true);
    QTextCursor(mark_at(begin, 0).at).insertBlock(format);
    QTextCursor(document_.findBlock(begin)).setBlockFormat({});
    insert(begin, text, front->place, end - 1, marks);
    for (auto mark = back; mark != marks_.end(); ++mark)
      marks.push_back({mark->at, tail_of(*mark)});
  }
  marks_ = std::move(marks);
}

/// In pieces, with a mark behind each. Marks are made last, since each change has to move all
/// that stand behind it.
void ShownRichText::insert(int position, const RichText& text, std::size_t begin, std::size_t end,
                           Marks& marks) {
  std::vector<std::pair<int, std::size_t>> places;
  marks.back().at.setKeepPositionOnInsert(true);
  QTextCursor all(&document_);
  all.beginEditBlock();  // laid out once
  for (const std::size_t place : text.line_begins(begin, lines_between_marks)) {
    if (place > end) break;
    position = insert_rich_text(mark_at(position, 0).at, text.part(begin, place));
    places.emplace_back(position, place);
    begin = place;
  }
  insert_rich_text(mark_at(position, 0).at, text.part(begin, end));
  all.endEditBlock();
  marks.back().at.setKeepPositionOnInsert(marks.size() == 1);
  for (const auto& [at, place] : places) marks.push_back(mark_at(at, place));
}

}  // namespace tavlo
