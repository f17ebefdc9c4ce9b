// Metafile records: the bytes of a Windows metafile's records, one after the
// other. A record is its size in 16-bit words (32 bits), a function number and
// parameters; all numbers are little-endian.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

using MetafileWord = std::uint16_t;

/// The 16 bits of a signed value; one that doesn't fit becomes the nearest.
MetafileWord signed_word(std::int32_t value);

/// A 32-bit number, low word first.
MetafileWord low_word(std::uint32_t value);
MetafileWord high_word(std::uint32_t value);

void append_words(std::string& bytes, std::span<const MetafileWord> words);

class MetafileRecords {
 public:
  void add(MetafileWord function, std::span<const MetafileWord> parameters);
  void add(MetafileWord function, std::initializer_list<MetafileWord> parameters) {
    add(function, std::span(parameters.begin(), parameters.size()));
  }

  const std::string& bytes() const { return bytes_; }

  /// Words of the largest record.
  std::uint32_t largest() const { return largest_; }

 private:
  std::string bytes_;
  std::uint32_t largest_ = 0;
};

/// The bytes of a text as words, filled up with a zero byte.
void push_text(std::vector<MetafileWord>& words, std::string_view bytes);

}  // namespace tavlo
