#include "project/rich_text.h"

#include "project/code_page.h"
#include "project/rtf_reader.h"
#include "project/rtf_writer.h"

namespace tavlo {

RichText::RichText(RichTextContent content) : size_(content.size()) {
  shared_->content = std::move(content);
}

RichText RichText::from_rtf(std::string_view document) {
  if (is_rtf(document)) return RichText(read_rtf(document));
  RichText text;
  text.append_plain(is_utf8(document) ? std::string(document) : utf8_from_ansi(document));
  return text;
}

void RichText::append_rtf(std::string_view fragment) { append(read_rtf(fragment)); }

void RichText::end_line() {
  if (empty()) return;
  const std::string last = part(size_ - 1, size_).plain();
  if (!last.empty() && last != "\n") append_plain("\n");
}

void RichText::append_plain(std::string_view text) {
  grow([&](RichTextContent& content) { content.add(text, {}); });
}

void RichText::append(const RichText& added) {
  RichTextContent part;
  {
    const std::lock_guard lock(added.shared_->at_work);
    part = added.shared_->content.front(added.size_);
  }
  append(part);
}

void RichText::append(const RichTextContent& added) {
  grow([&](RichTextContent& content) { content.add(added, 0, added.size()); });
}

/// Changes the content where nothing of others stands behind this document's end.
template <class Change>
void RichText::grow(Change change) {
  std::unique_lock lock(shared_->at_work);
  if (shared_->content.size() != size_) {
    auto own = std::make_shared<Shared>();
    own->content = shared_->content.front(size_);
    lock = std::unique_lock(own->at_work);
    shared_ = std::move(own);
  }
  change(shared_->content);
  size_ = shared_->content.size();
}

std::string RichText::rtf() const {
  RtfWriter writer;
  visit(writer);
  return writer.document();
}

std::string RichText::plain() const {
  const std::lock_guard lock(shared_->at_work);
  return shared_->content.plain(0, size_);
}

void RichText::visit(RichTextVisitor& visitor) const {
  const std::lock_guard lock(shared_->at_work);
  shared_->content.visit(0, size_, visitor);
}

std::optional<RichText> RichText::behind(const RichText& earlier) const {
  if (!continues(earlier)) return std::nullopt;
  RichTextContent added;
  const std::lock_guard lock(shared_->at_work);
  added.add(shared_->content, earlier.size_, size_);
  return RichText(std::move(added));
}

RichText RichText::part(std::size_t begin, std::size_t end) const {
  RichTextContent found;
  const std::lock_guard lock(shared_->at_work);
  found.add(shared_->content, begin, end);
  return RichText(std::move(found));
}

RichText RichText::replaced(std::size_t begin, std::size_t end, const RichText& part) const {
  RichText made = this->part(0, begin);
  made.append(part);
  made.append(this->part(end, size_));
  return made;
}

std::vector<std::size_t> RichText::line_begins(std::size_t begin, int every) const {
  const std::lock_guard lock(shared_->at_work);
  return shared_->content.line_begins(begin, size_, every);
}

bool RichText::same_back(std::size_t begin, const RichText& other, std::size_t other_begin) const {
  if (size_ - begin != other.size_ - other_begin) return false;
  if (shared_ == other.shared_) return begin == other_begin;
  const std::scoped_lock lock(shared_->at_work, other.shared_->at_work);
  return shared_->content.same_part(begin, other.shared_->content, other_begin, size_ - begin);
}

bool RichText::same_front(const RichText& other, std::size_t end) const {
  if (size_ < end || other.size_ < end) return false;
  if (shared_ == other.shared_) return true;
  const std::scoped_lock lock(shared_->at_work, other.shared_->at_work);
  return shared_->content.same_front(other.shared_->content, end);
}

bool RichText::continues(const RichText& earlier) const {
  if (size_ < earlier.size_) return false;
  if (shared_ == earlier.shared_) return true;
  const std::scoped_lock lock(shared_->at_work, earlier.shared_->at_work);
  return shared_->content.same_front(earlier.shared_->content, earlier.size_);
}

}  // namespace tavlo
