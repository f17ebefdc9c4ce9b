#include "cli/words.h"

#include <array>

#include "cli/arguments.h"
#include "numerics/number_text.h"
#include "numerics/run_time_error.h"

namespace tavlo::cli {

namespace {

double value(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? values[i] : 0.0;
}

std::string number(double value) { return number_text(value, 6); }

std::string counted(double count, const std::string& noun) {
  return number(count) + " " + noun + (count == 1.0 ? "" : "s");
}

std::string too_few(const std::vector<double>& v) {
  const double needed = value(v, 1);
  const std::string least = needed > 0 ? "; the model needs at least " + number(needed) : "";
  return "there " + std::string(value(v, 0) == 1.0 ? "is " : "are ") +
         (value(v, 0) == 0.0 ? "no failures" : "only " + counted(value(v, 0), "failure")) + least;
}

std::string no_maximum(double direction) {
  if (direction < 0)
    return "the likelihood goes on rising as t0 falls without limit, towards a Gumbel (G-); there "
           "is no best t0";
  return "the likelihood goes on rising as t0 nears the first failure; there is no best t0";
}

std::string arithmetic(int error) {
  switch (error) {
    case run_time::overflow: return "a number grew beyond all that can be held";
    case run_time::out_of_memory: return "there is not enough memory for this fit";
    default: return "the numbers of these data can't be worked with";
  }
}

std::string mode_words(const WordContext& context, double mode) {
  return "failure mode " + mode_name(context.mode_names, static_cast<int>(mode));
}

struct RefusalWords {
  const char* code;
  const char* text;  ///< empty where the words hold values
};

/// In the order of the codes.
constexpr std::array<RefusalWords, 16> refusal_words = {{
    {"too-few-failures", ""},
    {"time-not-above-zero", ""},
    {"rank-off-paper", ""},
    {"no-spread", ""},
    {"no-such-fit", "this model can't be fitted by this method"},
    {"slope-missing", "the model needs its slope (--slope BETA)"},
    {"no-failure", "there is no failure"},
    {"slope-without-limit",
     "the likelihood rises without limit with the slope: no failure stands before the last time"},
    {"scale-beyond-numbers", "the characteristic life is beyond all that can be written"},
    {"no-interior-maximum", ""},
    {"no-proven-optimum",
     "no answer of this model could be shown to be the best: the data do not tell its populations "
     "apart"},
    {"line-without-worth", "the best line of this model is worse than none"},
    {"too-many-units", "exact ranks are not known for so many units; use --ranks benard"},
    {"no-mode-fitted", ""},
    {"arithmetic", ""},
    {"stopped", "a doubt was answered with Cancel"},
}};
static_assert(static_cast<std::size_t>(RefusalCode::stopped) + 1 == refusal_words.size());

std::string words_with_values(const Refusal& refusal, const WordContext& context) {
  const std::vector<double>& v = refusal.values;
  switch (refusal.code) {
    case RefusalCode::too_few_failures: return too_few(v);
    case RefusalCode::time_not_above_zero:
      return "row " + number(value(v, 0)) + " has the time " + number(value(v, 1)) +
             "; the model needs times above 0";
    case RefusalCode::rank_off_paper:
      return "row " + number(value(v, 0)) + " has the plotting position " + number(value(v, 1)) +
             ", which must lie between 0 and 1";
    case RefusalCode::no_spread:
      return v.empty() ? "the failures do not spread: their times or their ranks are all equal"
                       : "the failures stand at only " + counted(value(v, 0), "distinct time") +
                             "; the model needs at least " + number(value(v, 1));
    case RefusalCode::no_interior_maximum: return no_maximum(value(v, 0));
    case RefusalCode::no_mode_fitted:
      return context.mode_names.empty() ? "the data name no failure modes"
                                        : "none of the failure modes could be fitted";
    default: return arithmetic(static_cast<int>(value(v, 0)));
  }
}

}  // namespace

std::string mode_name(const std::vector<std::string>& names, int mode) {
  const bool known = mode >= 1 && static_cast<std::size_t>(mode) <= names.size();
  return known ? names[static_cast<std::size_t>(mode) - 1] : std::to_string(mode);
}

Words words_of(const Refusal& refusal, const WordContext& context) {
  const auto place = static_cast<std::size_t>(refusal.code);
  if (place >= refusal_words.size()) return {"refused", "the fit was refused"};
  const auto& [code, text] = refusal_words[place];
  return {code, *text != 0 ? text : words_with_values(refusal, context)};
}

Words words_of(const Note& note, const WordContext& context) {
  const std::vector<double>& v = note.values;
  const Model* const other = find_model(note.model);
  const std::string other_name = other ? command_name(*other) : "a simpler model";
  switch (note.code) {
    case NoteCode::suspensions_left_out:
      return {"suspensions-left-out", counted(value(v, 0), "suspension") +
                                          " left out of this likelihood (--censored takes them "
                                          "in)"};
    case NoteCode::unconfirmed:
      return {"unconfirmed", "the best answer was found from one start only"};
    case NoteCode::no_second_population:
      return {"no-second-population",
              std::string(note.model == model_code::weibull2 ? "no second" : "no further") +
                  " population: the same as " + other_name};
    case NoteCode::share_at_bound:
      return {"share-at-bound",
              "a share stands at its bound of " + number(100 * value(v, 0)) + " %"};
    case NoteCode::few_failures:
      return {"few-failures", counted(value(v, 0), "failure") + " are few for this model; " +
                                  number(value(v, 1)) + " or more are preferred"};
    case NoteCode::counted_rows:
      return {"counted-rows",
              "failures counted on one line (100x3) share one plotting position; listed one by "
              "one they rank differently"};
    case NoteCode::population_not_reached:
      return {"population-not-reached", "no failure reaches population " + number(value(v, 0)) +
                                            "; only its share is determined"};
    case NoteCode::better_beyond_fence:
      return {"better-beyond-fence",
              "a population of fewer than two failures, or parameters that run off to a limit, "
              "would fit better (by " +
                  number(value(v, 0)) + "), which is no answer"};
    case NoteCode::likelihood_for_one_mode:
      return {"likelihood-for-one-mode",
              mode_words(context, value(v, 0)) + " has one failure and was fitted by likelihood"};
    case NoteCode::mode_not_fitted: {
      const Refusal reason{static_cast<RefusalCode>(static_cast<int>(value(v, 1))), {}};
      return {"mode-not-fitted", mode_words(context, value(v, 0)) + " could not be fitted (" +
                                     words_of(reason, context).code + ")"};
    }
  }
  return {"note", "there is something to know about this fit"};
}

Words words_of(Doubt doubt, const WordContext& context) {
  const std::string preferred = context.model.gate && context.model.gate->doubt_below > 0
                                    ? number(context.model.gate->doubt_below)
                                    : "";
  if (doubt == Doubt::minimum_life_by_likelihood)
    return {"Minimum life by likelihood",
            "a likelihood may have no best minimum life; regression (rr) is the usual way"};
  return {"Few failures",
          counted(context.failures, "failure") + " may be too few for this model" +
              (preferred.empty() ? "" : "; " + preferred + " or more are preferred")};
}

Words words_of_unreached() {
  return {"not-reached", "a time or a fraction that was asked for is not reached by this life"};
}

}  // namespace tavlo::cli
