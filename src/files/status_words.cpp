#include "files/status_words.h"

#include <algorithm>

#include "files/column_names.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

/// A word that answers a question means what the heading asks; one that names a state
/// means that state under any heading.
struct StatusWord {
  std::string_view word;
  bool suspended;
  bool answers;
};

constexpr StatusWord status_words[] = {
    {"f", false, false},
    {"s", true, false},
    {"1", false, true},
    {"0", true, true},
    {"yes", false, true},
    {"no", true, true},
    {"y", false, true},
    {"n", true, true},
    {"true", false, true},
    {"false", true, true},
    {"fail", false, false},
    {"failed", false, false},
    {"failure", false, false},
    {"c", true, false},
    {"censored", true, false},
    {"suspended", true, false},
    {"suspension", true, false},
    {"susp", true, false},
    {"right censored", true, false},
};

const StatusWord* find_word(std::string_view text) {
  for (const StatusWord& known : status_words)
    if (equal_in_any_case(text, known.word)) return &known;
  return nullptr;
}

bool holds(const std::vector<std::string>& words, std::string_view text) {
  return std::any_of(words.begin(), words.end(),
                     [text](const std::string& word) { return equal_in_any_case(word, text); });
}

}  // namespace

bool is_status_word(std::string_view text) { return find_word(text) != nullptr; }

FieldFault read_status_word(std::string_view field, const StatusMeaning& meaning, bool& suspended) {
  if (field.empty()) return "the status is missing";
  if (!meaning.failed.empty()) {
    suspended = !holds(meaning.failed, field);
    return std::nullopt;
  }
  const StatusWord* const word = find_word(field);
  if (!word)
    return "the status " + quoted(field) + " is neither F, 1, yes, true or failed (failure) nor " +
           "S, 0, no, false, censored or suspended (suspension)";
  suspended = word->suspended != (word->answers && meaning.turned_round);
  return std::nullopt;
}

}  // namespace tavlo
