#include "actions/fit_words.h"

#include <array>
#include <string_view>

#include "life/models.h"
#include "numerics/number_text.h"
#include "numerics/run_time_error.h"

namespace tavlo {
namespace {

/// A code with its text. Texts hold values in braces: {0} a number, {0%} a percentage, {0 failure}
/// counted things, {row}, {mode} and {modes} by name, {model}, and the {reason} of a mode without a
/// fit.
struct TableRow {
  const char* code;
  const char* text;
};

constexpr const char* not_constant = "";  ///< the text depends on the values

/// In the order of the codes.
constexpr std::array<TableRow, 15> refusal_table = {{
    {"too-few-failures", "{0 failure} found where it takes at least {1}"},
    {"time-not-above-zero", "row {row} has the time {1}; the model needs times above 0"},
    {"rank-off-paper", "row {row} has the plotting position {1}, which must lie between 0 and 1"},
    {"no-spread", not_constant},
    {"no-such-fit", "this model is not available by this method"},
    {"slope-missing", "the model needs a slope"},
    {"no-failure", "there is no failure"},
    {"slope-without-limit",
     "the likelihood rises without limit with the slope: no failure stands before the last time"},
    {"scale-beyond-numbers", "the characteristic life is beyond all that can be written"},
    {"no-interior-maximum", not_constant},
    {"no-proven-optimum",
     "no answer of this model could be shown to be the best: the data do not tell its populations "
     "apart"},
    {"line-without-worth", "the best line of this model is worse than none"},
    {"no-mode-fitted", not_constant},
    {"arithmetic", not_constant},
    {"stopped", "a doubt was answered with Cancel"},
}};
static_assert(static_cast<std::size_t>(RefusalCode::stopped) + 1 == refusal_table.size());

constexpr std::array<TableRow, 13> note_table = {{
    {"suspensions-left-out",
     "{0 suspension} left out of this likelihood (the choice Censored takes them in): it can't be "
     "compared with one that has them"},
    {"unconfirmed", "fewer than two independent starts found the best answer: it is unconfirmed"},
    {"no-second-population", not_constant},
    {"share-at-bound", "the share of a population stands at its bound of {0%}"},
    {"few-failures", "{0 failure} found; {1} or more are preferred for this model"},
    {"counted-rows",
     "failures counted on one row (100x3) share one plotting position; listed one by one they "
     "rank differently, and this regression with them"},
    {"population-not-reached", "no failure reaches population {0}: its life is not determined"},
    {"likelihood-for-one-mode",
     "failure mode {mode} has {1 failure} at one time only, and is fitted by maximum likelihood"},
    {"mode-not-fitted", "failure mode {mode} is not fitted: {reason}"},
    {"modes-left-out", "the answers for the life as a whole leave out failure mode {modes}"},
    {"fewer-points",
     "the failures give only {0} points for {1} parameters: some curve goes through them all, "
     "which "
     "proves nothing"},
    {"better-beyond-fence",
     "a population of fewer than two failures, or parameters that run off to a limit, would fit "
     "better, which is no answer"},
    {"no-interior-maximum",
     "as t0 falls without limit r squared goes on rising, or all but rises, to that of the Gumbel "
     "Lower model (G-): this t0 is only where it rises no more that could be felt"},
}};
static_assert(static_cast<std::size_t>(NoteCode::no_interior_maximum) + 1 == note_table.size());

double value_of(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? values[i] : 0.0;
}

std::string shown(double value) { return number_text(value, 7); }

std::string arithmetic_words(int error) {
  switch (error) {
    case run_time::overflow: return "a number grew beyond all that can be held";
    case run_time::out_of_memory: return "there is not enough memory for this fit";
    default: return "the numbers of these data can't be worked with";
  }
}

std::string no_maximum_words(double direction) {
  if (direction < 0)
    return "the likelihood has no maximum that stands out: as t0 falls without limit it goes on "
           "rising, or all but rises, to that of the Gumbel Lower model (G-), which a regression "
           "fits";
  return "the likelihood has no maximum: it goes on rising as t0 nears the first failure; compare "
         "with the regression";
}

/// The text of a refusal whose table row has none.
std::string text_by_values(const Refusal& refusal, const FitNames& names) {
  switch (refusal.code) {
    case RefusalCode::no_spread:
      return refusal.values.empty()
                 ? "the failures do not spread: their times or their ranks are all equal"
                 : "the failures stand at only {0 distinct time}; the model needs at least {1}";
    case RefusalCode::no_interior_maximum: return no_maximum_words(value_of(refusal.values, 0));
    case RefusalCode::no_mode_fitted:
      return names.has_modes ? "none of the failure modes can be fitted"
                             : "the data name no failure modes";
    default: return arithmetic_words(static_cast<int>(value_of(refusal.values, 0)));
  }
}

/// A gain that nobody feels may still come with other numbers.
std::string words_of_no_population(const Note& note) {
  const std::string order = note.model == model_code::weibull2 ? "second" : "further";
  constexpr double same = 1e-6;
  return value_of(note.values, 0) < same
             ? "no " + order + " population: the same as {model}"
             : "no " + order + " population stands out: the fit is hardly better than {model}";
}

/// What a text with braces is filled from.
struct Filling {
  const FitNames& names;
  const std::vector<double>& values;
  const Note* note = nullptr;  ///< null for a refusal

  std::string mode(double number) const { return names.mode(static_cast<int>(number)); }

  std::string modes() const {
    std::string list;
    for (const double number : values) list += (list.empty() ? "" : ", ") + mode(number);
    return list;
  }

  std::string model() const {
    const Model* const model = find_model(note ? note->model : 0);
    return model ? model->command_name : "a simpler model";
  }

  /// {0}, {0%}, {0 failure}.
  std::string number(std::string_view field) const {
    const double value = value_of(values, static_cast<std::size_t>(field.front() - '0'));
    if (field.size() == 1) return shown(value);
    if (field[1] == '%') return shown(100 * value) + " %";
    return shown(value) + std::string(field.substr(1)) + (value == 1.0 ? "" : "s");
  }

  std::string operator()(std::string_view field) const {
    if (field == "mode") return mode(value_of(values, 0));
    if (field == "modes") return modes();
    if (field == "model") return model();
    if (field == "reason") return words_of(reason_of(*note), names).text;
    if (field == "row") return std::to_string(names.row(static_cast<int>(value_of(values, 0))));
    return number(field);
  }
};

std::string filled(std::string_view text, const Filling& filling) {
  std::string words;
  for (std::size_t start = text.find('{'); start != text.npos; start = text.find('{')) {
    const std::size_t end = text.find('}', start);
    words += text.substr(0, start);
    words += filling(text.substr(start + 1, end - start - 1));
    text.remove_prefix(end + 1);
  }
  return words += text;
}

}  // namespace

FitWords words_of(const Refusal& refusal, const FitNames& names) {
  const TableRow& row = refusal_table.at(static_cast<std::size_t>(refusal.code));
  const std::string text = *row.text != 0 ? row.text : text_by_values(refusal, names);
  return {row.code, filled(text, {names, refusal.values})};
}

FitWords words_of(const Note& note, const FitNames& names) {
  const TableRow& row = note_table.at(static_cast<std::size_t>(note.code));
  const std::string text = *row.text != 0 ? row.text : words_of_no_population(note);
  return {row.code, filled(text, {names, note.values, &note})};
}

Refusal reason_of(const Note& note) {
  Refusal reason{static_cast<RefusalCode>(static_cast<int>(value_of(note.values, 1))), {}};
  if (note.values.size() > 2) reason.values.assign(note.values.begin() + 2, note.values.end());
  return reason;
}

}  // namespace tavlo
