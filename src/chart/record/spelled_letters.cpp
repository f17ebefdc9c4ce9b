#include "chart/record/spelled_letters.h"

#include <array>
#include <cstddef>

namespace tavlo {

namespace {

struct Letter {
  const char* greek;
  const char* name;
  const char* latin;  // as wide in Arial
};
constexpr std::array<Letter, 6> letters = {{{"\u03B2", "beta", "n"},
                                            {"\u03B4", "delta", "n"},
                                            {"\u03B7", "eta", "n"},
                                            {"\u03BC", "mu", "n"},
                                            {"\u03BE", "xi", "c"},
                                            {"\u03C3", "sigma", "\u00DF"}}};
constexpr std::size_t letter_length = 2;  // bytes of UTF-8

const char* replacement_at(const std::string& utf8, std::size_t at, const char* Letter::*form) {
  for (const Letter& letter : letters)
    if (utf8.compare(at, letter_length, letter.greek) == 0) return letter.*form;
  return nullptr;
}

std::string with_letters(const std::string& utf8, const char* Letter::*form) {
  std::string replaced;
  replaced.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    if (const char* const letter = replacement_at(utf8, at, form)) {
      replaced += letter;
      at += letter_length;
    } else {
      replaced += utf8[at++];
    }
  }
  return replaced;
}

}  // namespace

std::string with_letters_spelled(const std::string& utf8) {
  return with_letters(utf8, &Letter::name);
}

std::string with_latin_letters(const std::string& utf8) {
  return with_letters(utf8, &Letter::latin);
}

}  // namespace tavlo
