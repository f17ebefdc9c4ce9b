// Words: refusals, doubts and notes as the command line says them: a stable word with
// hyphens for programs, and a plain sentence for people.
#pragma once

#include <string>
#include <vector>

#include "actions/fit_words.h"
#include "fit/answer.h"
#include "fit/companion.h"
#include "life/models.h"

namespace tavlo::cli {

/// What the codes of one fit are about.
struct WordContext {
  const Model& model;
  const std::vector<std::string>& mode_names;
  double failures = 0;
};

FitWords words_of(const Refusal& refusal, const WordContext& context);
FitWords words_of(const Note& note, const WordContext& context);

/// Of a doubt: a short heading in place of the code.
FitWords words_of(Doubt doubt, const WordContext& context);

/// Of a life or a fraction that the fit does not have.
FitWords words_of_unreached();

/// The name of a failure mode; its number where it has none.
std::string mode_name(const std::vector<std::string>& names, int mode);

}  // namespace tavlo::cli
