#include "cli/fitting.h"

#include <algorithm>
#include <new>

#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

/// Answers every doubt alike and keeps it; told later, in the order of the fits.
class CollectingCompanion : public Companion {
 public:
  CollectingCompanion(bool strict, std::vector<Doubt>& doubts) : strict_(strict), doubts_(doubts) {}

  bool doubt(Doubt code) override {
    doubts_.push_back(code);
    return !strict_;
  }

 private:
  bool strict_;
  std::vector<Doubt>& doubts_;
};

/// Work that is shared between the cores must not throw.
void fit_one(const Sample& sample, const FitQuestions& questions, FitOutcome& outcome) {
  CollectingCompanion companion(questions.strict, outcome.doubts);
  const auto refuse = [&outcome](int error) {
    outcome.answer = {Refusal{RefusalCode::arithmetic, {static_cast<double>(error)}}, {}};
  };
  try {
    outcome.answer = fit(sample, outcome.request, companion);
  } catch (const RunTimeError& error) {
    refuse(error.number());
  } catch (const std::bad_alloc&) {
    refuse(run_time::out_of_memory);
  }
}

}  // namespace

std::string fit_name(const FitOutcome& outcome) {
  const FitChoice& choice = outcome.choice;
  return command_name(*choice.model) + "/" + choice.method->command_name +
         (outcome.request.censored ? "c" : "");
}

FitRequest request_of(const FitChoice& choice, const FitQuestions& questions) {
  FitRequest request;
  request.model = choice.model->code;
  request.method = choice.method->code;
  if (choice.model->code == model_code::weibayes) request.slope = questions.slope;
  request.ranks = questions.ranks;
  request.censored = questions.censored && has_censored_choice(request.model, request.method);
  return request;
}

std::vector<FitOutcome> fit_all(const Sample& sample, const FitQuestions& questions) {
  std::vector<FitOutcome> outcomes(questions.choices.size());
  for (std::size_t i = 0; i < outcomes.size(); ++i) {
    outcomes[i].choice = questions.choices[i];
    outcomes[i].request = request_of(questions.choices[i], questions);
  }
  for_each_index(outcomes.size(), [&](std::size_t i) { fit_one(sample, questions, outcomes[i]); });
  return outcomes;
}

std::optional<double> quality_of(const FitOutcome& outcome) {
  const Fit* const fit = outcome.answer.fit();
  if (!fit || outcome.choice.model->family == Family::none) return std::nullopt;
  return fit->quality;
}

bool all_made(const std::vector<FitOutcome>& outcomes) {
  return std::all_of(outcomes.begin(), outcomes.end(),
                     [](const FitOutcome& outcome) { return outcome.answer.fit() != nullptr; });
}

}  // namespace tavlo::cli
