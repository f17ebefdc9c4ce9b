#include "project/code_page.h"

#include <algorithm>
#include <array>

namespace tavlo {

namespace {

constexpr char32_t replacement = 0xFFFD;

// The characters of the bytes 0x80 to 0x9F.
constexpr std::array<char32_t, 32> upper_controls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned byte_of(char c) { return static_cast<unsigned char>(c); }

/// Length of the sequence that a lead byte announces; 0 for a byte that can't lead.
std::size_t sequence_length(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 0;
}

bool well_formed(char32_t code, std::size_t length) {
  constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
  return code >= least[length] && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

}  // namespace

int ansi_byte(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<int>(code);
  const auto found = std::find(upper_controls.begin(), upper_controls.end(), code);
  if (found == upper_controls.end()) return -1;
  return 0x80 + static_cast<int>(found - upper_controls.begin());
}

void append_utf8(std::string& text, char32_t code) {
  const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | (code >> 6));
    add(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    add(0xE0 | (code >> 12));
    add(0x80 | ((code >> 6) & 0x3F));
    add(0x80 | (code & 0x3F));
  } else {
    add(0xF0 | (code >> 18));
    add(0x80 | ((code >> 12) & 0x3F));
    add(0x80 | ((code >> 6) & 0x3F));
    add(0x80 | (code & 0x3F));
  }
}

char32_t next_code_point(std::string_view& text) {
  constexpr std::array<unsigned, 5> lead_bits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  const unsigned lead = byte_of(text[0]);
  const std::size_t length = sequence_length(lead);
  const auto broken = [&text] {
    text.remove_prefix(1);
    return replacement;
  };
  if (length == 0 || length > text.size()) return broken();
  char32_t code = lead & lead_bits[length];
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned next = byte_of(text[i]);
    if ((next & 0xC0) != 0x80) return broken();
    code = (code << 6) | (next & 0x3F);
  }
  if (length > 1 && !well_formed(code, length)) return broken();
  text.remove_prefix(length);
  return code;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t code = next_code_point(text);
    const bool really_there = before.size() - text.size() == 3;
    if (code == replacement && !really_there) return false;
  }
  return true;
}

// A character has three bytes behind its first at the most; where more of them
// stand in a row the text is no UTF-8, and any place is as good as another.
std::string_view utf8_front(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t end = most;
  while (end > 0 && most - end < 3 && (byte_of(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}

std::string utf8_from_ansi(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const unsigned byte = byte_of(c);
    append_utf8(text, byte >= 0x80 && byte < 0xA0 ? upper_controls[byte - 0x80] : byte);
  }
  return text;
}

std::string ansi_from_utf8(std::string_view text, std::string* lost) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const char32_t code = next_code_point(text);
    const int byte = ansi_byte(code);
    if (byte < 0 && lost) append_utf8(*lost, code);
    bytes += byte < 0 ? '?' : static_cast<char>(byte);
  }
  return bytes;
}

}  // namespace tavlo
