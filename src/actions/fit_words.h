// Fit words: what the refusals and notes of a fit say, in one table for the windows, the
// command line and a batch: a stable word with hyphens for programs, and a plain clause for
// people. The core speaks in codes with values. What a person can change has other names in
// each of these places, so the texts name none of a window's or an option's own.
#pragma once

#include <functional>
#include <string>

#include "fit/answer.h"

namespace tavlo {

/// What the values of the codes are called.
struct FitNames {
  bool has_modes = false;
  std::function<std::string(int mode)> mode;
  std::function<int(int entry)> row;  ///< number that the person knows a row by
};

struct FitWords {
  std::string code;
  std::string text;  ///< a sentence without its capital and its full stop
};

FitWords words_of(const Refusal& refusal, const FitNames& names);
FitWords words_of(const Note& note, const FitNames& names);

/// Why the mode of a note `mode_not_fitted` has no fit.
Refusal reason_of(const Note& note);

}  // namespace tavlo
