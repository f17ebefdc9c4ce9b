#include "guidance/library_search.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace tavlo {

namespace {

constexpr std::size_t not_found = std::string_view::npos;

// Two-byte UTF-8 letters begin with these: C3 for U+00C0 to U+00FF, C5 for Š, Œ and Ž.
constexpr char latin_lead = '\xC3';
constexpr char extended_lead = '\xC5';

/// A byte with capital letters made small. `before` is the byte in front of it.
char folded(char before, char c) {
  if (c >= 'A' && c <= 'Z') return static_cast<char>(c + ('a' - 'A'));
  const auto byte = static_cast<unsigned char>(c);
  if (before == latin_lead && byte >= 0x80 && byte <= 0x9E && byte != 0x97)
    return static_cast<char>(byte + 0x20);
  const bool is_capital = c == '\xA0' || c == '\x92' || c == '\xBD';
  return before == extended_lead && is_capital ? static_cast<char>(c + 1) : c;
}

std::string folded(std::string_view text) {
  std::string small;
  char before = 0;
  for (const char c : text) {
    small += folded(before, c);
    before = c;
  }
  return small;
}

/// Without the bit that tells small letters from capitals: equal for letters that fold into
/// each other, except behind `extended_lead`.
unsigned char masked(char c) { return static_cast<unsigned char>(c) | 0x20U; }

/// Looks for one word. Two of its bytes, the least common ones, are compared at many places at
/// once; the word itself only where both are found.
class WordFinder {
 public:
  explicit WordFinder(std::string_view word) : word_(folded(word)) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < word_.size(); ++i)
      if (i == 0 || word_[i - 1] != extended_lead) places.push_back(i);
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
      return rarity(word_[a]) > rarity(word_[b]);
    });
    first_ = places.front();
    second_ = places[places.size() > 1 ? 1 : 0];
  }

  std::size_t size() const { return word_.size(); }

  /// The first place from `at` on.
  std::size_t find(std::string_view text, std::size_t at) const {
    if (text.size() < word_.size()) return not_found;
    const std::size_t end = text.size() - word_.size() + 1;
    for (; at + block <= end; at += block)
      if (may_begin_in_block(text.data() + at))
        if (const std::size_t place = find_in(text, at, at + block); place != not_found)
          return place;
    return find_in(text, at, end);
  }

 private:
  static constexpr std::size_t block = 64;

  static std::size_t rarity(char c) {
    constexpr std::string_view common_first = "eatoinsrlcdhumpg012345-.";
    return std::min(common_first.find(c), common_first.size());
  }

  /// Without a branch, so that the compiler compares many bytes at once.
  bool may_begin_in_block(const char* text) const {
    const char* const first = text + first_;
    const char* const second = text + second_;
    const unsigned char a = masked(word_[first_]), b = masked(word_[second_]);
    unsigned char hit = 0;
    for (std::size_t i = 0; i < block; ++i)
      hit |= static_cast<unsigned char>(int{masked(first[i]) == a} & int{masked(second[i]) == b});
    return hit != 0;
  }

  std::size_t find_in(std::string_view text, std::size_t at, std::size_t end) const {
    for (; at < end; ++at)
      if (masked(text[at + first_]) == masked(word_[first_]) && is_at(text, at)) return at;
    return not_found;
  }

  bool is_at(std::string_view text, std::size_t at) const {
    char before = 0;
    for (const char c : word_) {
      if (folded(before, text[at]) != c) return false;
      before = text[at++];
    }
    return true;
  }

  std::string word_;
  std::size_t first_ = 0;
  std::size_t second_ = 0;
};

/// The pieces of a text between any of these characters.
std::vector<std::string_view> pieces(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> found;
  for (std::size_t at = 0; (at = text.find_first_not_of(separators, at)) != not_found;) {
    const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
    found.push_back(text.substr(at, end - at));
    at = end;
  }
  return found;
}

/// Commas and quotation marks look otherwise in a row's text than in its fields.
bool is_written_otherwise(std::string_view word) { return word.find_first_of(",\"") != not_found; }

class RowSearch {
 public:
  RowSearch(const LibraryRows& rows, std::string_view words) : rows_(rows) {
    for (const std::string_view word : pieces(words, " \t\r\n")) {
      if (is_written_otherwise(word)) add_field_word(word);
      for (const std::string_view piece : pieces(word, ",\"")) in_text_.emplace_back(piece);
    }
    // The longest word is likely to be the rarest.
    std::stable_sort(in_text_.begin(), in_text_.end(),
                     [](const WordFinder& a, const WordFinder& b) { return a.size() > b.size(); });
  }

  std::vector<std::uint32_t> run(std::size_t first) {
    std::vector<std::uint32_t> found;
    if (in_text_.empty()) {
      found.resize(rows_.count() - std::min(first, rows_.count()));
      std::iota(found.begin(), found.end(), static_cast<std::uint32_t>(first));
      std::erase_if(found, [&](std::uint32_t row) { return !is_in_fields(row); });
      return found;
    }
    const std::string_view whole = rows_.whole_text();
    for (std::size_t row = first; row < rows_.count(); ++row) {
      const std::size_t place = in_text_.front().find(whole, rows_.start(row));
      if (place == not_found) break;
      row = rows_.row_at(place, row);
      if (has_other_words(row)) found.push_back(static_cast<std::uint32_t>(row));
    }
    return found;
  }

 private:
  /// Such a field stands between marks, or holds one.
  void add_field_word(std::string_view word) {
    in_fields_.emplace_back(word);
    in_text_.emplace_back("\"");
  }

  bool has_other_words(std::size_t row) {
    const std::string_view text = rows_.text(row);
    for (std::size_t i = 1; i < in_text_.size(); ++i)
      if (in_text_[i].find(text, 0) == not_found) return false;
    return is_in_fields(row);
  }

  bool is_in_fields(std::size_t row) {
    if (in_fields_.empty()) return true;
    rows_.fields(row, fields_);
    return std::all_of(in_fields_.begin(), in_fields_.end(), [&](const WordFinder& word) {
      return std::any_of(fields_.begin(), fields_.end(), [&](const std::string& field) {
        return word.find(field, 0) != not_found;
      });
    });
  }

  const LibraryRows& rows_;
  std::vector<WordFinder> in_text_;    ///< in the row as it is written, the first one first
  std::vector<WordFinder> in_fields_;  ///< that must be looked for field by field
  std::vector<std::string> fields_;
};

}  // namespace

std::vector<std::uint32_t> find_library_rows(const LibraryRows& rows, std::size_t first,
                                             std::string_view words) {
  return RowSearch(rows, words).run(first);
}

}  // namespace tavlo
