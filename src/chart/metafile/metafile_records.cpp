#include "chart/metafile/metafile_records.h"

#include <algorithm>
#include <limits>

namespace tavlo {

MetafileWord signed_word(std::int32_t value) {
  using Range = std::numeric_limits<std::int16_t>;
  return static_cast<MetafileWord>(
      std::clamp(value, std::int32_t{Range::min()}, std::int32_t{Range::max()}));
}

MetafileWord low_word(std::uint32_t value) { return static_cast<MetafileWord>(value & 0xFFFF); }

MetafileWord high_word(std::uint32_t value) { return static_cast<MetafileWord>(value >> 16); }

void append_words(std::string& bytes, std::span<const MetafileWord> words) {
  for (const MetafileWord word : words) {
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>(word >> 8);
  }
}

void MetafileRecords::add(MetafileWord function, std::span<const MetafileWord> parameters) {
  constexpr std::size_t head = 3;
  const auto size = static_cast<std::uint32_t>(head + parameters.size());
  const MetafileWord first[] = {low_word(size), high_word(size), function};
  append_words(bytes_, first);
  append_words(bytes_, parameters);
  largest_ = std::max(largest_, size);
}

void push_text(std::vector<MetafileWord>& words, std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
    words.push_back(static_cast<MetafileWord>(first | second << 8));
  }
}

}  // namespace tavlo
