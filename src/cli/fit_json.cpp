#include <algorithm>

#include "cli/fit_report.h"
#include "cli/output.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

WordContext context_of(const FitReport& report, const FitOutcome& outcome) {
  return {*outcome.choice.model, report.mode_names, report.sample.total_failures};
}

void add_refusal(JsonText& json, const FitWords& words) {
  json.key("status").integer(0).key("error").string(words.text).key("code").string(words.code);
}

/// What a fit by failure mode says of one of its modes.
void add_mode(JsonText& json, const FitReport& report, const FitOutcome& outcome,
              const ModeFit& mode) {
  json.key("mode").string(mode_name(report.mode_names, mode.mode));
  if (mode.refusal) return add_refusal(json, words_of(*mode.refusal, context_of(report, outcome)));
  const Method* const method = find_method(mode.method);
  json.key("method").string(method ? method->command_name : "");
  json.key("status").integer(1).key("quality").number(mode.quality.value_or(0));
}

void add_rows(JsonText& json, const FitReport& report, const FitOutcome& outcome, const Fit& fit) {
  const NamePair& names = parameter_names(outcome.choice.model->family).key;
  json.key("rows").open('[');
  for (std::size_t i = 0; i < fit.life.rows.size(); ++i) {
    const FitParam& row = fit.life.rows[i];
    const ShownParameters shown = shown_parameters(fit.life.model, row);
    json.open('{');
    if (i < fit.modes.size()) add_mode(json, report, outcome, fit.modes[i]);
    add_optional(json, names.first, shown.first);
    add_optional(json, names.second, shown.second);
    json.key("t0").number(row.T0).key("fraction").number(row.Fraction);
    json.key("applies").integer(row.Applies).close('}');
  }
  json.close(']');
}

void add_starts(JsonText& json, const StartsReport& starts) {
  json.key("starts").open('{').key("tried").integer(starts.tried);
  json.key("agreed").integer(starts.agreed);
  add_optional(json, "runner_up", starts.runner_up);
  json.close('}');
}

const char* word_of(Proof::Kind kind) {
  switch (kind) {
    case Proof::Kind::interior: return "interior";
    case Proof::Kind::bound: return "bound";
    case Proof::Kind::flat: break;
  }
  return "flat";
}

void add_proof(JsonText& json, const Proof& proof) {
  json.key("proof").open('{').key("kind").string(word_of(proof.kind));
  if (proof.at_share_bound) json.key("bound").string("share");
  const Model* const same = proof.kind == Proof::Kind::flat ? find_model(proof.same_as) : nullptr;
  if (same) json.key("same_as").string(command_name(*same));
  json.key("decrement").number(proof.decrement);
  json.key("smallest_curvature").number(proof.smallest_curvature).close('}');
}

/// False when one of the answers is not reached.
bool add_answers(JsonText& json, const FitQuestions& questions, const Life& life) {
  bool all_reached = true;
  json.key("b_life").open('[');
  for (const double p : questions.b_life) {
    const std::optional<double> x = quantile(life, p);
    all_reached = all_reached && x;
    json.open('{').key("p").number(p);
    add_optional(json, "x", x);
    json.close('}');
  }
  json.close(']').key("at").open('[');
  for (const double x : questions.at)
    json.open('{').key("x").number(x).key("p").number(fraction_failed(life, x)).close('}');
  json.close(']');
  return all_reached;
}

void add_fit(JsonText& json, const FitReport& report, const FitOutcome& outcome, const Fit& fit) {
  json.key("status").integer(1);
  add_quality(json, outcome);
  if (fit.starts) add_starts(json, *fit.starts);
  if (fit.proof) add_proof(json, *fit.proof);
  add_rows(json, report, outcome, fit);
  const bool all_reached = add_answers(json, report.questions, fit.life);
  std::vector<FitWords> notes = notes_of(report, outcome);
  if (!all_reached) notes.push_back(words_of_unreached());
  add_notes(json, notes);
}

void add_outcome(JsonText& json, const FitReport& report, const FitOutcome& outcome) {
  const auto& [model, method] = outcome.choice;
  json.open('{').key("model").string(command_name(*model));
  // A refused fit's code is the word that tells why.
  if (outcome.answer.fit()) json.key("code").integer(model->code);
  json.key("method").string(method->command_name);
  json.key("name").string(short_label(outcome.request));
  if (const Fit* const fit = outcome.answer.fit()) {
    add_fit(json, report, outcome, *fit);
  } else {
    add_refusal(json, report, outcome);
    add_notes(json, notes_of(report, outcome));
  }
  json.close('}');
}

}  // namespace

void add_optional(JsonText& json, const char* key, const std::optional<double>& value) {
  json.key(key);
  if (value)
    json.number(*value);
  else
    json.null();
}

void add_quality(JsonText& json, const FitOutcome& outcome) {
  const bool likelihood = outcome.request.method == method_code::mle;
  const std::optional<double> quality = quality_of(outcome);
  const std::optional<double> none;
  add_optional(json, "quality", quality);
  add_optional(json, "r_squared", likelihood ? none : quality);
  add_optional(json, "log_likelihood", likelihood ? quality : none);
}

void add_refusal(JsonText& json, const FitReport& report, const FitOutcome& outcome) {
  add_refusal(json, words_of(*outcome.answer.refusal(), context_of(report, outcome)));
}

void add_notes(JsonText& json, const std::vector<FitWords>& notes) {
  if (notes.empty()) return;
  json.key("notes").open('[');
  for (const FitWords& words : notes)
    json.open('{').key("code").string(words.code).key("text").string(words.text).close('}');
  json.close(']');
}

void add_messages(JsonText& json, const FitReport& report) {
  json.key("messages").open('[');
  for (const FitOutcome& outcome : report.outcomes)
    for (const Doubt doubt : outcome.doubts) {
      const FitWords words = words_of(doubt, context_of(report, outcome));
      json.open('{').key("title").string(words.code);
      json.key("text").string(fit_name(outcome) + ": " + words.text);
      json.key("answer").string(report.questions.strict ? "Cancel" : "OK").close('}');
    }
  json.close(']');
}

std::vector<FitWords> notes_of(const FitReport& report, const FitOutcome& outcome) {
  std::vector<FitWords> notes;
  for (const Note& note : outcome.answer.notes)
    notes.push_back(words_of(note, context_of(report, outcome)));
  return notes;
}

void add_totals(JsonText& json, const Sample& sample) {
  json.key("units").number(sample.total_failures + sample.total_suspensions);
  json.key("failures").number(sample.total_failures);
  json.key("suspensions").number(sample.total_suspensions);
}

void add_fits(JsonText& json, const FitReport& report) {
  add_totals(json, report.sample);
  json.key("fits").open('[');
  for (const FitOutcome& outcome : report.outcomes) add_outcome(json, report, outcome);
  json.close(']');
  add_messages(json, report);
}

void tell_suspensions_left_out(const std::string& subject, const Sample& sample,
                               const FitQuestions& questions) {
  for (const FitChoice& choice : questions.choices) {
    if (!leaves_suspensions_out(sample, request_of(choice, questions))) continue;
    return warn(subject, "suspensions are left out of the likelihood of " +
                             command_name(*choice.model) + " (--censored takes them in)");
  }
}

void tell_messages(const std::string& subject, const FitReport& report) {
  for (const FitOutcome& outcome : report.outcomes) {
    const std::string start = subject + ": " + fit_name(outcome);
    const WordContext context = context_of(report, outcome);
    for (const Doubt doubt : outcome.doubts) warn(start, words_of(doubt, context).text);
    if (const Refusal* const refusal = outcome.answer.refusal())
      complain(start + ": " + words_of(*refusal, context).text);
  }
}

}  // namespace tavlo::cli
