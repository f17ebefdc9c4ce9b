#include "files/text_encoding.h"

#include <algorithm>

#include "files/text_lines.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr char nul = '\0';

enum class Encoding { bytes, utf16_little_end, utf16_big_end, utf32 };

/// Most pairs of bytes of Latin text in UTF-16 have a NUL, at the same place. The start
/// of the text tells.
Encoding encoding_by_nuls(std::string_view text) {
  const std::string_view start = text.substr(0, 256);
  std::size_t nuls[2] = {0, 0};
  for (std::size_t i = 0; i < start.size(); ++i) nuls[i % 2] += start[i] == nul ? 1 : 0;
  const auto [fewer, more] = std::minmax(nuls[0], nuls[1]);
  constexpr std::size_t few = 8;
  if (more <= start.size() / 4 || fewer > more / few) return Encoding::bytes;
  return nuls[0] > nuls[1] ? Encoding::utf16_big_end : Encoding::utf16_little_end;
}

/// Takes the byte order mark off.
Encoding take_encoding(std::string_view& text) {
  using namespace std::string_view_literals;
  if (text.starts_with("\xFF\xFE\0\0"sv) || text.starts_with("\0\0\xFE\xFF"sv))
    return Encoding::utf32;
  const bool little = text.starts_with("\xFF\xFE"sv);
  if (little || text.starts_with("\xFE\xFF"sv)) {
    text.remove_prefix(2);
    return little ? Encoding::utf16_little_end : Encoding::utf16_big_end;
  }
  text = without_byte_order_mark(text);
  return encoding_by_nuls(text);
}

/// Gives the units of a UTF-16 text one by one.
class WideUnits {
 public:
  WideUnits(std::string_view bytes, bool big_end) : bytes_(bytes), big_end_(big_end) {}

  bool at_end() const { return at_ + 1 >= bytes_.size(); }

  char32_t next() {
    const auto first = static_cast<unsigned char>(bytes_[at_]);
    const auto second = static_cast<unsigned char>(bytes_[at_ + 1]);
    at_ += 2;
    return big_end_ ? static_cast<char32_t>(first << 8 | second)
                    : static_cast<char32_t>(second << 8 | first);
  }

 private:
  std::string_view bytes_;
  bool big_end_;
  std::size_t at_ = 0;
};

bool is_in(char32_t unit, char32_t first, char32_t last) { return unit >= first && unit <= last; }

/// False where half a character stands alone.
bool append_character(WideUnits& units, std::string& text) {
  constexpr char32_t first_high = 0xD800, first_low = 0xDC00, last_low = 0xDFFF, beyond = 0x10000;
  const char32_t unit = units.next();
  if (!is_in(unit, first_high, last_low)) {
    append_utf8(text, unit);
    return true;
  }
  if (unit >= first_low || units.at_end()) return false;
  const char32_t low = units.next();
  if (!is_in(low, first_low, last_low)) return false;
  append_utf8(text, beyond + ((unit - first_high) << 10) + (low - first_low));
  return true;
}

/// The number of the line that follows `before`.
long line_behind(std::string_view before) {
  const char end = before.find('\n') == std::string_view::npos ? '\r' : '\n';
  return static_cast<long>(std::count(before.begin(), before.end(), end)) + 1;
}

std::optional<ReadFault> convert_wide(std::string_view bytes, bool big_end, std::string& text) {
  text.clear();
  text.reserve(bytes.size() / 2);
  WideUnits units(bytes, big_end);
  while (!units.at_end())
    if (!append_character(units, text))
      return ReadFault{line_behind(text), "the UTF-16 text is broken"};
  if (bytes.size() % 2 != 0)
    return ReadFault{line_behind(text), "the UTF-16 text ends in half a character"};
  return std::nullopt;
}

std::optional<ReadFault> find_nul(std::string_view text) {
  const std::size_t first_nul = text.find(nul);
  if (first_nul == std::string_view::npos) return std::nullopt;
  return ReadFault{line_behind(text.substr(0, first_nul)), "there is a NUL byte; this is no text"};
}

ReadFault fault_of_wide(Encoding encoding) {
  const char* const name = encoding == Encoding::utf32 ? "UTF-32" : "UTF-16";
  return {1, std::string("this is ") + name + " text; save it as UTF-8"};
}

}  // namespace

std::string_view without_byte_order_mark(std::string_view bytes) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
  return bytes;
}

std::optional<ReadFault> find_foreign_bytes(std::string_view bytes) {
  const Encoding encoding = take_encoding(bytes);
  return encoding == Encoding::bytes ? find_nul(bytes) : fault_of_wide(encoding);
}

std::optional<ReadFault> decode_text(std::string_view& text, std::string& buffer) {
  const Encoding encoding = take_encoding(text);
  if (encoding == Encoding::bytes) return find_nul(text);
  if (encoding == Encoding::utf32) return fault_of_wide(encoding);
  if (auto fault = convert_wide(text, encoding == Encoding::utf16_big_end, buffer)) return fault;
  text = buffer;
  return find_nul(text);
}

}  // namespace tavlo
