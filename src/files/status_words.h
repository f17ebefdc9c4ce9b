// Status words: what people and programs write into a column that tells whether a unit
// failed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/read_fault.h"

namespace tavlo {

/// True for a known word of either meaning, in any case.
bool is_status_word(std::string_view text);

/// True for the digits 1 and 0 alone.
inline bool is_status_digit(std::string_view text) { return text == "1" || text == "0"; }

/// How a column is to be understood.
struct StatusMeaning {
  bool turned_round = false;        ///< 1, yes and true mean censored
  std::vector<std::string> failed;  ///< if any, just these mean failed, all else suspended
};

/// Reads one field of a status column that is neither F nor S alone.
FieldFault read_status_word(std::string_view field, const StatusMeaning& meaning, bool& suspended);

/// Reads one field of a status column. Here for the sake of speed: most are F or S.
inline FieldFault read_status(std::string_view field, const StatusMeaning& meaning,
                              bool& suspended) {
  const bool letter = field.size() == 1 && (field.front() == 'F' || field.front() == 'S');
  if (!letter || !meaning.failed.empty()) return read_status_word(field, meaning, suspended);
  suspended = field.front() == 'S';
  return std::nullopt;
}

}  // namespace tavlo
