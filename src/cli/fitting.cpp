#include "cli/fitting.h"

#include <algorithm>

#include "actions/dispatch.h"
#include "solver/mixture_functions.h"

namespace tavlo::cli {

namespace {

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

/// A fit that ends without a box has told the status panel, or has failed its gate.
std::string why_refused(const CliWorld& world, std::size_t first) {
  const std::string words = words_since(world.prompts, first);
  if (!words.empty()) return words;
  const std::string& status = world.views.last_status();
  return told_here(world.prompts,
                   status.empty() ? "there are too few failures for this model" : status);
}

/// A likelihood that the solver has found: that of a mixture.
bool is_mixture_likelihood(const FitResult& fit) {
  constexpr int parameters_of_weibull = 2;
  const Model* model = find_model(fit.ModelCode);
  return fit.Method == method_code::mle && model &&
         model->solver_parameters > parameters_of_weibull;
}

/// The likelihood of a mixture leaves suspensions out unless it is told not to.
void warn_of_suspensions(const Session& session, const CliPrompts& prompts, const FitResult& fit) {
  if (!is_mixture_likelihood(fit)) return;
  if (session.gData(1).Points(0).Susps > 0 && !session.solver.data.CensoredLikelihood)
    complain(prompts.subject() +
             ": warning: suspensions are not in this likelihood (--censored takes them in)");
}

FitOutcome fit_one(Session& session, CliWorld& world, const FitChoice& choice, bool report) {
  CliPrompts& prompts = world.prompts;
  world.views.forget_status();
  const std::size_t seen = prompts.seen().size();
  FitOutcome outcome{choice, 0, {}};
  std::int16_t code = choice.model->code;
  prompts.set_own_slope(choice.model->fixed_slope > 0 ? choice.model->fixed_slope : 0.0);
  Fit_Distribution(session, 1, 1, code, choice.method->code, false, report);
  const int slot = find_slot(session.gFit(1), code, choice.method->code);
  const bool stands = slot > 0 && session.gFit(1).Fits(slot).Status == FitStatus::calculated;
  outcome.slot = stands ? slot : 0;
  if (stands) outcome.choice.model = find_model(code);  // a slope of 1 is the exponential
  if (outcome.slot == 0) outcome.error = why_refused(world, seen);
  if (outcome.slot != 0) warn_of_suspensions(session, prompts, session.gFit(1).Fits(outcome.slot));
  return outcome;
}

/// The model has no F where even the lowest fraction that it knows isn't reached.
LifePoint fraction_at(ErrorReporter& reporter, const FitResult& fit, double time) {
  constexpr double no_fraction = 1e-30;
  const double fraction = Fd_YofX(reporter, fit, time);
  return {time, fraction, fraction > no_fraction};
}

/// An answer that is left out is told, or it would read as a slip.
void tell_unknown(const std::string& subject, const FitResult& fit,
                  const std::vector<LifePoint>& points, const std::string& kind) {
  if (std::all_of(points.begin(), points.end(), [](const LifePoint& p) { return p.known; })) return;
  const Model* model = find_model(fit.ModelCode);
  const bool no_gumbel = model && model->family == Family::gumbel && !(fit.Rows(1).Scale > 0);
  complain(subject + ": " + fit.Label + ": " +
           (no_gumbel ? "this Gumbel gives no " + kind + ": its Xi is below 0"
                      : "a " + kind + " asked for lies outside the model"));
}

}  // namespace

bool has_censored_likelihood(const Session& session, const FitResult& fit) {
  return is_mixture_likelihood(fit) && session.solver.data.CensoredLikelihood;
}

std::string fit_name(const FitChoice& choice) {
  return command_name(*choice.model) + "/" + choice.method->command_name;
}

std::vector<FitOutcome> fit_all(Session& session, CliWorld& world,
                                const std::vector<FitChoice>& choices, bool report) {
  CliPrompts& prompts = world.prompts;
  const std::string file = prompts.subject();
  std::vector<FitOutcome> outcomes;
  for (const FitChoice& choice : choices) {
    prompts.set_subject(file + ": " + fit_name(choice));
    outcomes.push_back(fit_one(session, world, choice, report));
  }
  prompts.set_subject(file);
  return outcomes;
}

std::vector<LifePoint> b_lives(Session& session, const std::string& subject, const FitResult& fit,
                               const std::vector<double>& fractions) {
  std::vector<LifePoint> points;
  for (const double fraction : fractions)
    points.push_back(find_life(session.errors, session.gData(1), fit, fraction));
  tell_unknown(subject, fit, points, "life");
  return points;
}

std::vector<LifePoint> fractions_at(Session& session, const std::string& subject,
                                    const FitResult& fit, const std::vector<double>& times) {
  std::vector<LifePoint> points;
  for (const double time : times) points.push_back(fraction_at(session.errors, fit, time));
  tell_unknown(subject, fit, points, "fraction");
  return points;
}

}  // namespace tavlo::cli
