#include "cli/shown_text.h"

#include "project/code_page.h"

namespace tavlo::cli {

namespace {

constexpr char32_t broken = 0xFFFD;

/// The two further ranges are controls of terminals, and ends of lines or no characters
/// at all in XML.
bool is_control(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 || c >= 0x110000 ||
         (c & 0xFFFE) == 0xFFFE;
}

void append_bytes(std::string& shown, std::string_view bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    shown += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
  }
}

}  // namespace

std::string shown_text(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t c = next_code_point(text);
    const std::string_view bytes = before.substr(0, before.size() - text.size());
    if (is_control(c) || (c == broken && bytes.size() == 1))
      append_bytes(shown, bytes);
    else
      shown += bytes;
  }
  return shown;
}

}  // namespace tavlo::cli
