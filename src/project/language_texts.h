// Language texts: captions that a language file may give in place of the built-in ones.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavlo {

/// Captions 1 to 58; number 0 is not used.
inline constexpr std::size_t language_texts = 59;

namespace language_text {
inline constexpr std::size_t calculate = 1;  ///< on the button of a fit panel
inline constexpr std::size_t working = 2;    ///< on the same while it calculates
}  // namespace language_text

/// The built-in words of these two.
inline constexpr const char* button_words[] = {"", "&Calculate Fit", "working"};

/// The text of that number, or the built-in one where the language has none.
inline std::string caption_or(const std::vector<std::string>& texts, std::size_t number,
                              const std::string& built_in) {
  return number < texts.size() && !texts[number].empty() ? texts[number] : built_in;
}

/// One of the two captions of the button.
inline std::string button_caption(const std::vector<std::string>& texts, std::size_t number) {
  return caption_or(texts, number, button_words[number]);
}

}  // namespace tavlo
