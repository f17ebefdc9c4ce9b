#include "actions/words.h"

#include <array>
#include <cctype>

#include "actions/fit_words.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {
namespace {

// Gates -------------------------------------------------------------------------

struct GateWords {
  Gate gate;
  const char* parameters;       ///< their number
  const char* preferred;        ///< failures, as the stop names them
  const char* doubt_preferred;  ///< failures, as the doubt names them
  const char* doubt_title;
  const char* stop_title;  ///< empty: the call ends without a word
  const char* stop_text;   ///< empty: the common one
};

constexpr const char* may_be = "May Be Insufficient points for Fit";

// The doubt of four parameters says 25 while its gate is at 30: kept so.
constexpr std::array<GateWords, 7> gate_words = {{
    {Gate::two_parameters, "2", "", "", "", "Insufficient points for Fit",
     "At least 2 points are needed to do a 2 parameter Weibull.\n"
     "(If MLE, then at least 1 failure and 1 right tail suspension.)"},
    {Gate::three_parameters, "3", "21", "21", "Maybe Insufficient points for Fit",
     "Insufficient points for 3 Parameter Weibull", ""},
    {Gate::four_parameters, "4", "30", "25", may_be, "Insufficient points for 4 Parameter Weibull",
     ""},
    {Gate::five_parameters, "5", "40", "40", may_be, "Insufficient points for 5 Parameter Weibull",
     ""},
    {Gate::seven_parameters, "7", "50", "50", may_be, "Insufficient points for 7 Parameter Weibull",
     ""},
    {Gate::line, "2", "", "", "", "Insufficient points for Fit",
     "At least 2 points are needed to do a fit."},
    {Gate::fixed_slope, "1", "", "", "", "", ""},
}};

const GateWords& words_of(Gate gate) {
  for (const GateWords& words : gate_words)
    if (words.gate == gate) return words;
  throw RunTimeError(run_time::invalid_argument);
}

std::string stop_text(const GateWords& words) {
  std::string text = words.stop_text;
  if (text.empty()) {
    const std::string parameters = words.parameters;
    text = "At least " + parameters + " points are needed to do a " + parameters +
           " parameter Weibull.  At least " + words.preferred + " points are preferred.";
  }
  return text + "\nFit Cancelled";
}

Box few_failures_box(const GateWords& words) {
  return {words.doubt_title,
          std::string("At least ") + words.doubt_preferred + " failures are preferred for a " +
              words.parameters +
              " parameter Weibull.  The program may not converge.  Be careful with your "
              "interpretation of the fit.\nClick 'OK' to continue, 'Cancel' to cancel analysis.",
          BoxIcon::question, BoxButtons::ok_cancel};
}

Box minimum_life_box() {
  return {"3 Parameter MLE Warning.",
          "Warning!  Some three parameter Weibull data sets\n"
          " may not converge with MLE, especially under\n"
          " the following conditions:\n"
          " 1. Small sample size (<50 failures), or\n"
          " 2. Multiple failures at same time.\n"
          "Compare your results to the 'X on Y Rank Regression' results.\n"
          "(This special warning applies to 3 parameter MLE fits.)\n"
          "'OK' to continue, 'Cancel' to stop MLE solution.",
          BoxIcon::exclamation, BoxButtons::ok_cancel};
}

// Refusals ----------------------------------------------------------------------

double value_of(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? values[i] : 0.0;
}

int number_of(const std::vector<double>& values, std::size_t i) {
  return static_cast<int>(value_of(values, i));
}

std::string shown(double value) { return number_text(value, 7); }

FitNames names_of(const DataSet& data) {
  return {.has_modes = data.ModeNames.bound() > 0,
          .mode = [&data](int mode) { return mode_name(data, mode); },
          .row = [](int entry) { return entry; }};
}

std::string time_words(const Refusal& refusal, const Model* model) {
  const double time = value_of(refusal.values, 1);
  const std::string row = "Row " + std::to_string(number_of(refusal.values, 0)) + ": ";
  if (time == 0) return row + "Data X is 0, and a time of 0 has no place on a logarithmic axis.";
  return row + "Data X is " + shown(time) + ".  The model " + (model ? model->long_name : "") +
         " needs times above 0.";
}

/// No routine fits the model by the method.
const char* unavailable_words(const FitRequest& request) {
  const Model* model = find_model(request.model);
  const bool likelihood = request.method == method_code::mle;
  switch (model ? model->routine : FitRoutine::mixture) {
    case FitRoutine::normal: return "MLE for Normal, LogNormal not programmed in Fit_Distribution";
    case FitRoutine::gumbel: return "MLE Gumbel not programmed in Fit_Distribution";
    case FitRoutine::lognormal3:
      return likelihood ? "MLE 3Par LN not programmed in Fit_Distribution"
                        : "3Par LN not programmed";
    case FitRoutine::custom: return likelihood ? "model not programmed" : "Custom not programmed";
    default: return "model not programmed";
  }
}

Box exclamation(std::string title, std::string text) {
  return {std::move(title), std::move(text), BoxIcon::exclamation, BoxButtons::ok};
}

std::optional<Box> stop_box(const FitRequest& request) {
  const Model* model = find_model(request.model);
  if (!model || !model->gate) return std::nullopt;
  const GateWords& words = words_of(model->gate->id);
  if (words.stop_title[0] == '\0') return std::nullopt;
  return exclamation(words.stop_title, stop_text(words));
}

// Notes -------------------------------------------------------------------------

Box only_one_failure_box(const std::string& mode, double failures) {
  const std::string found = failures > 1 ? "There are " + shown(failures) + " failures at one time"
                                         : "There is only one failure";
  return {"Only One Failure for Mode",
          "For the failure mode:  " + mode + "\n" + found +
              " and right-tail suspensions.  A Rank Regression "
              "fit cannot be calculated.  MLE will be used\nFor this failure mode."};
}

Box mode_box(const std::string& mode, const Refusal& reason, const DataSet& data) {
  const bool one_failure =
      reason.code == RefusalCode::too_few_failures && value_of(reason.values, 0) == 1;
  return {"Insufficient Data",
          "For the failure mode:  " + mode + "\n" +
              (one_failure ? "There is only one failure and no right-tail suspensions."
                           : sentence(refusal_reason(reason, data))) +
              "  A Fit by Failure Mode cannot be calculated."};
}

}  // namespace

Box doubt_box(Doubt doubt, const Model& model) {
  if (doubt == Doubt::minimum_life_by_likelihood) return minimum_life_box();
  if (!model.gate) throw RunTimeError(run_time::invalid_argument);
  return few_failures_box(words_of(model.gate->id));
}

Box retry_box(const char* where, const RunTimeError& error) {
  return {"*** Tavlo Error ***",
          error.description() + "\n" + where +
              "\nChoose Retry to Continue, or Cancel to Exit the subroutine.",
          BoxIcon::exclamation, BoxButtons::retry_cancel};
}

Box comma_question(const std::string& what) {
  return {"Decimal comma",
          "In this text " + what +
              ".\n\nIs it a decimal sign? (Yes: 1,5 is one and a half. No: 1,5 is five failures "
              "at 1.)",
          BoxIcon::question, BoxButtons::yes_no_cancel};
}

Box unknown_model_box(int model_code) {
  return exclamation("No such model", "There is no model with the code " +
                                          std::to_string(model_code) + ".\nFit Cancelled");
}

bool is_silent(const Refusal& refusal, const FitRequest& request) {
  if (refusal.code == RefusalCode::too_few_failures) return !stop_box(request);
  return refusal.code == RefusalCode::stopped || refusal.code == RefusalCode::slope_missing;
}

std::optional<Box> refusal_box(const Refusal& refusal, const FitRequest& request,
                               const DataSet& data) {
  const std::string cancelled = "\nFit Cancelled";
  switch (refusal.code) {
    case RefusalCode::too_few_failures: return stop_box(request);
    case RefusalCode::time_not_above_zero:
      return exclamation(value_of(refusal.values, 1) < 0 ? "Negative times" : "Times of 0",
                         time_words(refusal, find_model(request.model)) + cancelled);
    case RefusalCode::no_such_fit: return exclamation("", unavailable_words(request));
    case RefusalCode::no_interior_maximum:
    case RefusalCode::no_proven_optimum:
    case RefusalCode::line_without_worth:
    case RefusalCode::no_mode_fitted:
    case RefusalCode::slope_missing:
    case RefusalCode::stopped: return std::nullopt;
    case RefusalCode::arithmetic: {
      const RunTimeError error(number_of(refusal.values, 0));
      return exclamation("Error: " + std::to_string(error.number()) + " " + error.description(),
                         short_label(request) + ": " + error.description() + cancelled);
    }
    default:
      return exclamation(short_label(request) + ": no fit",
                         sentence(refusal_reason(refusal, data)) + cancelled);
  }
}

std::string refusal_reason(const Refusal& refusal, const DataSet& data) {
  return words_of(refusal, names_of(data)).text;
}

std::string sentence(std::string words) {
  if (!words.empty())
    words[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(words[0])));
  return words + ".";
}

std::optional<Box> note_box(const Note& note, const DataSet& data) {
  const std::string mode = mode_name(data, number_of(note.values, 0));
  if (note.code == NoteCode::likelihood_for_one_mode)
    return only_one_failure_box(mode, value_of(note.values, 1));
  if (note.code != NoteCode::mode_not_fitted) return std::nullopt;
  return mode_box(mode, reason_of(note), data);
}

std::string note_sentence(const Note& note, const DataSet& data) {
  return sentence(words_of(note, names_of(data)).text);
}

std::string left_out_sentence(double suspensions) {
  return note_sentence({NoteCode::suspensions_left_out, 0, {suspensions}}, {});
}

}  // namespace tavlo
