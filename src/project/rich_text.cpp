#include "project/rich_text.h"

#include <array>
#include <cctype>
#include <charconv>
#include <vector>

#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr std::string_view document_head =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil Arial;}}\\f0\\fs20 ";

/// Adds one character in the form that RTF reads back as itself.
void append_escaped(std::string& rtf, char32_t code) {
  if (code == '\\' || code == '{' || code == '}') {
    rtf += '\\';
    rtf += static_cast<char>(code);
  } else if (code == '\t') {
    rtf += "\\tab ";
  } else if (code < 0x80) {
    rtf += static_cast<char>(code);
  } else if (code < 0x10000) {
    // RTF writes the code as a signed 16-bit number.
    const int signed_code =
        code > 0x7FFF ? static_cast<int>(code) - 0x10000 : static_cast<int>(code);
    rtf += "\\u" + std::to_string(signed_code) + "?";
  } else {
    const char32_t rest = code - 0x10000;
    append_escaped(rtf, 0xD800 + (rest >> 10));
    append_escaped(rtf, 0xDC00 + (rest & 0x3FF));
  }
}

/// Reads RTF from its front and collects the text.
class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf) : rest_(rtf) {}

  std::string read() {
    while (!rest_.empty()) step();
    return std::move(text_);
  }

 private:
  struct Group {
    bool hidden = false;
    int fallback_length = 1;  ///< characters that stand behind a \u for old readers
  };

  void step() {
    const char c = take();
    if (c == '{') {
      groups_.push_back(groups_.back());
    } else if (c == '}') {
      if (groups_.size() > 1) groups_.pop_back();
    } else if (c == '\\') {
      control();
    } else if (c != '\r' && c != '\n') {
      put(static_cast<unsigned char>(c));
    }
  }

  char take() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void control() {
    if (rest_.empty()) return;
    const char c = rest_.front();
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) return word();
    rest_.remove_prefix(1);
    if (c == '\'') return hexadecimal();
    if (c == '*') groups_.back().hidden = true;
    if (c == '~') put(0xA0);
    if (c == '\n' || c == '\r') put('\n');
    if (c == '\\' || c == '{' || c == '}') put(static_cast<unsigned char>(c));
  }

  void hexadecimal() {
    unsigned byte = 0;
    const auto digits = rest_.substr(0, 2);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    rest_.remove_prefix(static_cast<std::size_t>(result.ptr - digits.data()));
    if (result.ec != std::errc() || skip_fallback()) return;
    const char ansi = static_cast<char>(byte);
    if (!groups_.back().hidden) text_ += utf8_from_ansi(std::string_view(&ansi, 1));
  }

  void word() {
    std::size_t length = 0;
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    while (length < rest_.size() && letter(rest_[length])) ++length;
    const std::string_view name = rest_.substr(0, length);
    rest_.remove_prefix(length);
    int number = 0;
    const auto result = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (result.ec != std::errc::invalid_argument)
      rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
    if (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    act(name, number);
  }

  void act(std::string_view name, int number) {
    constexpr std::array<std::string_view, 6> destinations = {"fonttbl", "colortbl", "stylesheet",
                                                              "info",    "pict",     "generator"};
    for (const std::string_view destination : destinations)
      if (name == destination) groups_.back().hidden = true;
    if (name == "par" || name == "line" || name == "row") put('\n');
    if (name == "tab" || name == "cell") put('\t');
    if (name == "uc") groups_.back().fallback_length = number < 0 || number > 8 ? 1 : number;
    if (name == "u") unicode(number);
  }

  void unicode(int number) {
    const auto unit = static_cast<char32_t>(number & 0xFFFF);
    if (unit >= 0xD800 && unit < 0xDC00) {
      high_surrogate_ = unit;
    } else if (unit >= 0xDC00 && unit < 0xE000) {
      if (high_surrogate_) show(0x10000 + ((high_surrogate_ - 0xD800) << 10) + (unit - 0xDC00));
      high_surrogate_ = 0;
    } else if (unit != 0) {
      show(unit);
    }
    to_skip_ = groups_.back().fallback_length;
  }

  bool skip_fallback() {
    if (to_skip_ <= 0) return false;
    --to_skip_;
    return true;
  }

  void put(char32_t code) {
    if (!skip_fallback()) show(code);
  }

  void show(char32_t code) {
    if (!groups_.back().hidden) append_utf8(text_, code);
  }

  std::string_view rest_;
  std::string text_;
  std::vector<Group> groups_{Group{}};
  char32_t high_surrogate_ = 0;
  int to_skip_ = 0;
};

}  // namespace

void RichText::append_rtf(std::string_view fragment) { append(fragment); }

void RichText::append_plain(std::string_view text) { append(rtf_text(text)); }

std::string rtf_text(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const char32_t code = next_code_point(text);
    if (code == '\r' && !text.empty() && text.front() == '\n') continue;
    if (code == '\n' || code == '\r') {
      escaped += "\\par ";
    } else {
      append_escaped(escaped, code);
    }
  }
  return escaped;
}

void RichText::clear() {
  text_ = std::make_shared<std::string>();
  size_ = 0;
}

/// True where the text ends in a control word, which letters and digits behind it would
/// become part of, and a blank would end.
bool ends_in_control_word(std::string_view rtf) {
  std::size_t begin = rtf.size();
  while (begin > 0 && std::isalnum(static_cast<unsigned char>(rtf[begin - 1])) != 0) --begin;
  if (begin == 0 || begin == rtf.size() || rtf[begin - 1] != '\\') return false;
  return begin < 2 || rtf[begin - 2] != '\\';
}

void RichText::append(std::string_view rtf) {
  const bool needs_end = ends_in_control_word(body());
  if (text_->size() != size_) text_ = std::make_shared<std::string>(body());
  if (needs_end) *text_ += ' ';
  *text_ += rtf;
  size_ = text_->size();
}

std::string RichText::rtf() const { return std::string(document_head) + std::string(body()) + "}"; }

std::string RichText::plain() const { return rtf_to_plain(body()); }

std::optional<std::string> RichText::plain_behind(const RichText& earlier) const {
  const bool goes_on =
      size_ >= earlier.size_ && (text_ == earlier.text_ || body().starts_with(earlier.body()));
  if (!goes_on) return std::nullopt;
  std::string_view added = body().substr(earlier.size_);
  // The blank that ends a control word is no part of the text.
  if (ends_in_control_word(earlier.body()) && added.starts_with(' ')) added.remove_prefix(1);
  return rtf_to_plain(added);
}

std::string rtf_to_plain(std::string_view rtf) { return RtfReader(rtf).read(); }

}  // namespace tavlo
