#include "cli/words.h"

#include "numerics/count_text.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

std::string number(double value) { return number_text(value, 6); }

FitNames names_of(const WordContext& context) {
  return {.has_modes = !context.mode_names.empty(),
          .mode = [&](int mode) { return mode_name(context.mode_names, mode); },
          .row = [](int entry) { return entry; }};
}

}  // namespace

std::string mode_name(const std::vector<std::string>& names, int mode) {
  const bool known = mode >= 1 && static_cast<std::size_t>(mode) <= names.size();
  return known ? names[static_cast<std::size_t>(mode) - 1] : std::to_string(mode);
}

FitWords words_of(const Refusal& refusal, const WordContext& context) {
  return tavlo::words_of(refusal, names_of(context));
}

FitWords words_of(const Note& note, const WordContext& context) {
  return tavlo::words_of(note, names_of(context));
}

FitWords words_of(Doubt doubt, const WordContext& context) {
  const std::string preferred = context.model.gate && context.model.gate->doubt_below > 0
                                    ? number(context.model.gate->doubt_below)
                                    : "";
  if (doubt == Doubt::minimum_life_by_likelihood)
    return {"Minimum life by likelihood",
            "a likelihood may have no best minimum life; regression (rr) is the usual way"};
  return {"Few failures",
          counted(context.failures, "failure", 6) + " may be too few for this model" +
              (preferred.empty() ? "" : "; " + preferred + " or more are preferred")};
}

FitWords words_of_unreached() {
  return {"not-reached", "a time or a fraction that was asked for is not reached by this life"};
}

}  // namespace tavlo::cli
