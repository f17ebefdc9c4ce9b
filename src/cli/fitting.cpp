#include "cli/fitting.h"

#include "fit/dispatch.h"
#include "solver/mixture_functions.h"

namespace tavlo::cli {

namespace {

int find_slot(const FitSet& fits, int model_code, int method_code) {
  for (int k = 1; k <= fits.nFits; ++k) {
    const FitResult& fit = fits.Fits(k);
    if (fit.ModelCode == model_code && fit.Method == method_code &&
        fit.Status == FitStatus::calculated)
      return k;
  }
  return 0;
}

bool is_accepted_doubt(const AnsweredBox& seen) {
  return seen.box.buttons != BoxButtons::ok && seen.answer != BoxAnswer::cancel;
}

/// Why there is no fit: what the boxes said from the first of them that counts.
std::string words_since(const CliPrompts& prompts, std::size_t first) {
  std::string words;
  for (std::size_t i = first; i < prompts.seen().size(); ++i) {
    const AnsweredBox& seen = prompts.seen()[i];
    if (!is_accepted_doubt(seen)) words += (words.empty() ? "" : "; ") + box_line(seen.box);
  }
  return words;
}

/// A reason that no box has told.
std::string told_here(const CliPrompts& prompts, const std::string& words) {
  complain(prompts.subject() + ": " + words);
  return words;
}

/// A fit that ends without a word has failed its gate.
std::string why_refused(const CliPrompts& prompts, std::size_t first) {
  const std::string words = words_since(prompts, first);
  if (!words.empty()) return words;
  return told_here(prompts, "there are too few failures for this model");
}

/// The routines take the size of a time on a logarithmic axis, which makes a
/// line of negative times that means nothing.
bool has_times_off_the_paper(const DataSet& data, const Model& model) {
  return model.x_scale() == x_scale::log && data.Count > 0 && data.Points(1).X <= 0.0F;
}

FitOutcome fit_one(Session& session, CliPrompts& prompts, const FitChoice& choice, bool report) {
  const std::size_t seen = prompts.seen().size();
  FitOutcome outcome{choice, 0, {}};
  if (has_times_off_the_paper(session.gData(1), *choice.model)) {
    outcome.error = told_here(prompts, "this model needs times above 0, the data hold others");
    return outcome;
  }
  std::int16_t code = choice.model->code;
  Fit_Distribution(session, 1, 1, code, choice.method->code, false, report);
  outcome.slot = find_slot(session.gFit(1), code, choice.method->code);
  if (outcome.slot == 0) outcome.error = why_refused(prompts, seen);
  return outcome;
}

}  // namespace

std::string fit_name(const FitChoice& choice) {
  return command_name(*choice.model) + "/" + choice.method->command_name;
}

std::vector<FitOutcome> fit_all(Session& session, CliPrompts& prompts,
                                const std::vector<FitChoice>& choices, bool report) {
  const std::string file = prompts.subject();
  std::vector<FitOutcome> outcomes;
  for (const FitChoice& choice : choices) {
    prompts.set_subject(file + ": " + fit_name(choice));
    outcomes.push_back(fit_one(session, prompts, choice, report));
  }
  prompts.set_subject(file);
  return outcomes;
}

std::vector<LifePoint> b_lives(Session& session, const FitResult& fit,
                               const std::vector<double>& fractions) {
  std::vector<LifePoint> points;
  for (const double fraction : fractions)
    points.push_back(find_life(session.errors, session.gData(1), fit, fraction));
  return points;
}

std::vector<LifePoint> fractions_at(Session& session, const FitResult& fit,
                                    const std::vector<double>& times) {
  std::vector<LifePoint> points;
  for (const double time : times)
    points.push_back({time, Fd_YofX(session.errors, fit, time), true});
  return points;
}

}  // namespace tavlo::cli
