#include "actions/words.h"

#include <array>
#include <cctype>

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

/// "Row 3: ", by the order of entry. `entry` is an index of `Points`.
std::string row_words(const DataSet& data, int entry) {
  const bool known = entry >= 1 && entry <= data.Points.bound();
  const int order = known && data.Points(entry).Order > 0 ? data.Points(entry).Order : entry;
  return "Row " + std::to_string(order) + ": ";
}

std::string time_words(const Refusal& refusal, const Model* model, const DataSet& data) {
  const double time = value_of(refusal.values, 1);
  const std::string row = row_words(data, number_of(refusal.values, 0));
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

std::string sentence(std::string words) {
  if (!words.empty())
    words[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(words[0])));
  return words + ".";
}

std::string no_maximum_words(double direction) {
  return direction > 0
             ? "the likelihood has no maximum: it rises as the minimum life comes up to the first "
               "failure; compare with the regression"
             : "the likelihood has no maximum: it rises as the minimum life goes to minus "
               "infinity, where the Gumbel Lower model is the limit";
}

// Notes -------------------------------------------------------------------------

Box only_one_failure_box(const std::string& mode) {
  return {"Only One Failure for Mode",
          "For the failure mode:  " + mode +
              "\nThere is only one failure and right-tail suspensions.  A Rank Regression "
              "fit cannot be calculated.  MLE will be used\nFor this failure mode."};
}

Box mode_box(const std::string& mode, RefusalCode code, const std::string& reason) {
  const bool one_failure =
      code == RefusalCode::too_few_failures || code == RefusalCode::slope_without_limit;
  return {"Insufficient Data",
          "For the failure mode:  " + mode + "\n" +
              (one_failure ? "There is only one failure and no right-tail suspensions."
                           : sentence(reason)) +
              "  A Fit by Failure Mode cannot be calculated."};
}

RefusalCode reason_code(const Note& note) {
  return static_cast<RefusalCode>(number_of(note.values, 1));
}

std::string name_of(std::int16_t model_code) {
  const Model* model = find_model(model_code);
  return model ? model->command_name : "a simpler model";
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
                         time_words(refusal, find_model(request.model), data) + cancelled);
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
  const std::vector<double>& values = refusal.values;
  switch (refusal.code) {
    case RefusalCode::too_few_failures:
      return "there are " + shown(value_of(values, 0)) + " failures where " +
             shown(value_of(values, 1)) + " are needed";
    case RefusalCode::time_not_above_zero: {
      std::string words = time_words(refusal, nullptr, data);
      words.pop_back();
      return words;
    }
    case RefusalCode::rank_off_paper:
      return row_words(data, number_of(values, 0)) + "the rank " + shown(value_of(values, 1)) +
             " has no place on probability paper";
    case RefusalCode::no_spread: return "all failures stand at one time or at one rank";
    case RefusalCode::no_such_fit: return "no routine fits this model by this method";
    case RefusalCode::slope_missing: return "the model needs a slope";
    case RefusalCode::no_failure: return "there is no failure among the data";
    case RefusalCode::slope_without_limit:
      return "no failure comes before the largest time: the slope has no limit";
    case RefusalCode::scale_beyond_numbers:
      return "the fit has a characteristic life beyond all numbers";
    case RefusalCode::no_interior_maximum: return no_maximum_words(value_of(values, 0));
    case RefusalCode::no_proven_optimum:
      return "the model has more parameters than the data support: its best answers spend a "
             "population on less than two failures or on a spike";
    case RefusalCode::line_without_worth: return "the line is worse than no line";
    case RefusalCode::too_many_units:
      return "so many units have no exact ranks; Benard's approximation has no such limit";
    case RefusalCode::no_mode_fitted: return "no failure mode can be fitted";
    case RefusalCode::arithmetic: return run_time_description(number_of(values, 0));
    case RefusalCode::stopped: return "it was stopped";
  }
  return "";
}

std::optional<Box> note_box(const Note& note, const DataSet& data) {
  const std::string mode = mode_name(data, number_of(note.values, 0));
  if (note.code == NoteCode::likelihood_for_one_mode) return only_one_failure_box(mode);
  if (note.code != NoteCode::mode_not_fitted) return std::nullopt;
  return mode_box(mode, reason_code(note), refusal_reason({reason_code(note), {}}, data));
}

std::string note_sentence(const Note& note, const DataSet& data) {
  const double first = value_of(note.values, 0);
  switch (note.code) {
    case NoteCode::suspensions_left_out: return left_out_sentence(first);
    case NoteCode::unconfirmed:
      return "The best answer was found from one start only: it is unconfirmed.";
    case NoteCode::no_second_population:
      return std::string(note.model == model_code::weibull2 ? "No second" : "No further") +
             " population: in effect the same as " + name_of(note.model) + ".";
    case NoteCode::share_at_bound:
      return "The share of a population stands at its bound: " + shown(100 * first) + " %.";
    case NoteCode::few_failures:
      return "There are " + shown(first) + " failures; at least " +
             shown(value_of(note.values, 1)) + " are preferred for this model.";
    case NoteCode::counted_rows:
      return "A row that counts several failures has one rank; listed one by one they would rank "
             "differently, and it matters here.";
    case NoteCode::population_not_reached:
      return "No failure reaches population " + shown(first) +
             ": only its share is known, its life is not determined.";
    case NoteCode::better_beyond_fence:
      return "A population of fewer than two failures, or parameters that run off to a limit, "
             "would fit better (by " +
             shown(first) + "), which is no answer.";
    case NoteCode::likelihood_for_one_mode:
      return "Failure mode " + mode_name(data, number_of(note.values, 0)) +
             " has one failure only and is fitted by maximum likelihood.";
    case NoteCode::mode_not_fitted:
      return "Failure mode " + mode_name(data, number_of(note.values, 0)) +
             " is not fitted: " + refusal_reason({reason_code(note), {}}, data) + ".";
  }
  return "";
}

std::string left_out_sentence(double suspensions) {
  return shown(suspensions) +
         " suspensions are not in this likelihood; Censored, beside the methods, takes them in.";
}

}  // namespace tavlo
