#include "actions/dispatch.h"

#include <algorithm>
#include <optional>

#include "actions/busy_pointer.h"
#include "actions/fit_aside.h"
#include "actions/fitting_companion.h"
#include "actions/reports.h"
#include "actions/shown_fits.h"
#include "actions/slope_question.h"
#include "actions/starts_words.h"
#include "actions/words.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

/// The data set as a sample of each kind of ranks, made when asked for.
class Samples {
 public:
  explicit Samples(const DataSet& data) : data_(data) {}

  const Sample& with(RankKind ranks) {
    if (ranks == data_.reading.ranks()) return data_.sample();
    if (!other_) other_ = data_.reading.sample_with(ranks);
    return *other_;
  }

 private:
  const DataSet& data_;
  std::optional<Sample> other_;
};

/// Where a request comes from and where its answer goes.
struct Desk {
  Session& session;
  int fit_index;
  const DataSet& data;
  Samples samples;

  Desk(Session& the_session, int data_index, int the_fit_index)
      : session(the_session),
        fit_index(the_fit_index),
        data(the_session.project.data(data_index)),
        samples(data) {}

  FitSet& fits() const { return session.project.fits(fit_index); }
  FitPanel& panel() const { return *session.gFitForm(fit_index); }
  Prompts& prompts() const { return session.ports.prompts; }

  /// The panel's line: it stays on the status bar when the fit is done.
  void remark(const std::string& text) const {
    if (text.empty()) return;
    panel().remark += (panel().remark.empty() ? "" : "  ") + text;
    session.ports.views.status(panel().remark);
  }
};

/// What became of a request.
struct Outcome {
  int slot = 0;             ///< of the fit that answers it; 0 when it was refused
  bool calculated = false;  ///< in this call
};

bool has_data(const Session& session, int data_index) {
  const DataSheet& sheet = *session.gDataForm(data_index);
  return sheet.data().is_read() || sheet.last_row() >= 2;
}

FitAnswer answer_to(Desk& desk, const FitRequest& request) {
  if (leaves_suspensions_out(desk.data.sample(), request))
    desk.session.ports.views.status(left_out_sentence(desk.data.sample().total_suspensions));
  const BusyPointer busy(desk.session.ports.views);
  FittingCompanion companion(desk.session, *find_model(request.model));
  FitAnswer answer = fit_aside(desk.samples.with(request.ranks), request, companion);
  // Some parts can't be interrupted: whoever has given the fit up does not get it all the same.
  if (answer.fit() && companion.stop_wanted()) return {Refusal{RefusalCode::stopped, {}}, {}};
  return answer;
}

// A refusal that no box is stated for is told by the panel's line and stays in the log.
void tell_refusal(const Desk& desk, const FitRequest& request, const Refusal& refusal) {
  if (is_silent(refusal, request)) return;
  if (const auto box = refusal_box(refusal, request, desk.data)) {
    // The fits of a set, and the one asked for, may fail for one reason: it is told once.
    if (auto& told = desk.session.fitting.told) {
      if (std::find(told->begin(), told->end(), box->text) != told->end()) return;
      told->push_back(box->text);
    }
    desk.prompts().show(*box);
    return;
  }
  const std::string words =
      full_label(request) + " refused: " + refusal_reason(refusal, desk.data) + ".";
  desk.remark(words);
  AppendLog(desk.session, words + "\n", false);
}

void tell_notes(const Desk& desk, const FitRequest& request, const FitAnswer& answer) {
  const Model* model = find_model(request.model);
  const Refusal* refusal = answer.refusal();
  const bool modes_were_tried = !refusal || refusal->code == RefusalCode::no_mode_fitted;
  if (model->routine == FitRoutine::by_mode && modes_were_tried)
    desk.prompts().show({"", "Fit_ByMode model not programmed yet"});
  for (const Note& note : answer.notes)
    if (const auto box = note_box(note, desk.data)) desk.prompts().show(*box);
}

/// Puts the fit where an older one of its kind stands, or behind the last.
int keep(const Desk& desk, const FitRequest& request, const FitAnswer& answer) {
  FitSet& fits = desk.fits();
  int slot = find_slot(fits, request);
  if (slot == 0) {
    slot = ++fits.nFits;
    fits.Fits.resize(slot);
  }
  fits.Fits(slot) = record_of(request, *answer.fit(), answer.notes, desk.data.read_revision);
  return slot;
}

void remark_fit(const Desk& desk, const FitRequest& request, int slot) {
  const FitResult& fit = desk.fits().Fits(slot);
  if (fit.starts)
    desk.remark(sentence(starts_words(*fit.starts, fit.proof, fit.Method == method_code::mle)));
  if (leaves_suspensions_out(desk.data.sample(), request))
    desk.remark(left_out_sentence(desk.data.sample().total_suspensions));
}

Outcome answer_request(Desk& desk, const FitRequest& request) {
  const int slot = find_slot(desk.fits(), request);
  if (slot > 0 && is_current(desk.fits().Fits(slot), desk.data) &&
      desk.fits().Fits(slot).request == request) {
    remark_fit(desk, request, slot);
    return {slot, false};
  }
  const FitAnswer answer = answer_to(desk, request);
  tell_notes(desk, request, answer);
  if (const Refusal* refusal = answer.refusal()) {
    if (refusal->code == RefusalCode::stopped && desk.session.ports.progress.stop_wanted())
      desk.remark("Stopped: " + short_label(request) + " was not made.");
    else if (slot > 0 && desk.fits().Fits(slot).request.slope == request.slope)
      desk.fits().Fits(slot).refused_revision = desk.data.read_revision;
    tell_refusal(desk, request, *refusal);
    return {};
  }
  const int kept = keep(desk, request, answer);
  remark_fit(desk, request, kept);
  return {kept, true};
}

/// Slope to offer: that of the model or, for a fit that stands, the one it has.
double slope_to_offer(const Desk& desk, const Model& model, int method_code) {
  if (model.fixed_slope > 0) return model.fixed_slope;
  const int slot = find_slot(desk.fits(), model.code, method_code);
  return slot > 0 ? desk.fits().Fits(slot).request.slope.value_or(0) : 0.0;
}

/// Why no slope at all would do: told before one is asked for.
std::optional<Refusal> refusal_of_any_slope(Desk& desk, FitRequest request) {
  request.model = model_code::weibayes;
  FittingCompanion companion(desk.session, *find_model(request.model));
  const FitAnswer answer = fit_aside(desk.samples.with(request.ranks), request, companion);
  const Refusal* refusal = answer.refusal();
  if (!refusal || refusal->code == RefusalCode::slope_missing) return std::nullopt;
  return *refusal;
}

/// Completes the request of a model that fixes its slope. False when the user has named
/// none, or when no slope would do. 1 or 2 makes the model the exponential or the Rayleigh.
bool complete_with_slope(Desk& desk, const Model& model, FitRequest& request) {
  if (const auto refusal = refusal_of_any_slope(desk, request)) {
    tell_refusal(desk, request, *refusal);
    return false;
  }
  const auto slope = ask_slope(desk.prompts(), desk.session.settings.punctuation,
                               slope_to_offer(desk, model, request.method));
  if (!slope) return false;
  request.model = *slope == 1   ? model_code::exponential
                  : *slope == 2 ? model_code::rayleigh
                                : model_code::weibayes;
  request.slope = slope;
  return true;
}

FitRequest request_for(const Session& session, int fit_index, const Model& model,
                       std::int16_t method_code) {
  FitRequest request;
  request.model = model.code;
  request.method = method_code;
  // Those that the sheet shows: a project that was opened keeps the kind it was saved with.
  request.ranks = session.project.data(data_of_fits(session.project, fit_index)).reading.ranks();
  request.censored =
      session.gFitForm(fit_index)->censored && has_censored_choice(model.code, method_code);
  return request;
}

bool tell_missing_data(Session& session, int data_index) {
  if (has_data(session, data_index)) return false;
  AppendLog(session, "Please enter data for set # " + std::to_string(data_index) + "\n", false);
  return true;
}

struct Wish {
  int data_index;
  int fit_index;
  std::int16_t method_code;
  bool draw;
  bool report;
};

void fit_data(Session& session, const Wish& wish, std::int16_t& model_code) {
  Desk desk(session, wish.data_index, wish.fit_index);
  desk.panel().remark.clear();
  const Model* model = find_model(model_code);
  if (!model) {
    desk.prompts().show(unknown_model_box(model_code));
    return;
  }
  if (tell_missing_data(session, wish.data_index)) return;
  FitRequest request = request_for(session, wish.fit_index, *model, wish.method_code);
  if (model->fixes_slope() && !complete_with_slope(desk, *model, request)) return;
  model_code = request.model;
  const Outcome outcome = answer_request(desk, request);
  if (outcome.slot == 0) return;
  if (wish.draw) follow_on_charts(session, wish.fit_index, outcome.slot);
  if (wish.report && outcome.calculated)
    PostFitLog(session, outcome.slot, wish.data_index, wish.fit_index);
}

/// The model's request as the settings are now; nothing without a slope. One that the set holds
/// keeps its slope.
std::optional<FitRequest> request_of_model(Desk& desk, const Model& model,
                                           std::int16_t method_code) {
  FitRequest request = request_for(desk.session, desk.fit_index, model, method_code);
  if (!model.fixes_slope()) return request;
  const int slot = find_slot(desk.fits(), request);
  if (slot > 0) request.slope = desk.fits().Fits(slot).request.slope;
  if (model.fixed_slope > 0) request.slope = model.fixed_slope;
  if (!request.slope && !complete_with_slope(desk, model, request)) return std::nullopt;
  return request;
}

bool asks_for_the_same_fit(const FitRequest& a, const FitRequest& b) {
  return a.model == b.model && a.method == b.method && a.censored == b.censored;
}

/// What the set holds, ranked as the data are now, and what is asked for in its place or behind
/// it. What these data have refused is not tried again.
std::vector<FitRequest> requests_with(Desk& desk, std::span<const std::int16_t> models,
                                      std::int16_t method_code) {
  std::vector<FitRequest> requests;
  for (int k = 1; k <= desk.fits().nFits; ++k) {
    const FitResult& fit = desk.fits().Fits(k);
    if (fit.is_given || (is_out_of_date(fit, desk.data) && !wants_refit(fit, desk.data))) continue;
    requests.push_back(fit.request);
    requests.back().ranks = desk.data.reading.ranks();
  }
  for (const std::int16_t code : models) {
    const Model* const model = find_model(code);
    const auto wanted = model ? request_of_model(desk, *model, method_code) : std::nullopt;
    if (!wanted) continue;
    const auto same = std::find_if(
        requests.begin(), requests.end(),
        [&](const FitRequest& request) { return asks_for_the_same_fit(request, *wanted); });
    if (same == requests.end())
      requests.push_back(*wanted);
    else
      *same = *wanted;
  }
  return requests;
}

/// Answers the requests, one after another; the slot of the last that has a fit, or 0. Escape
/// ends them all.
int answer_requests(Desk& desk, std::span<const FitRequest> requests) {
  int last = 0;
  for (const FitRequest& request : requests) {
    if (desk.session.ports.progress.stop_wanted()) break;
    desk.panel().remark.clear();
    if (const int slot = answer_request(desk, request).slot) last = slot;
  }
  return last;
}

constexpr const char* place = "Fit_Distribution routine:";
constexpr const char* prefix = "Error calculating Fit: ";

}  // namespace

void Fit_Distribution(Session& session, int data_index, int fit_index, std::int16_t& model_code,
                      std::int16_t method_code, bool draw, bool report) {
  guarded(session.errors, error_words(prefix, place), [&] {
    fit_data(session, {data_index, fit_index, method_code, draw, report}, model_code);
  });
}

void refit_all(Session& session, int data_index, int fit_index) {
  guarded(session.errors, error_words(prefix, place), [&] {
    Desk desk(session, data_index, fit_index);
    answer_requests(desk, requests_with(desk, {}, method_code::x_on_y));
  });
}

void fit_models(Session& session, int data_index, int fit_index,
                std::span<const std::int16_t> models, std::int16_t method_code) {
  guarded(session.errors, error_words(prefix, place), [&] {
    Desk desk(session, data_index, fit_index);
    if (tell_missing_data(session, data_index)) return;
    const int last = answer_requests(desk, requests_with(desk, models, method_code));
    if (last > 0) follow_on_charts(session, fit_index, last);
  });
}

void show_again(Session& session, int data_index, int fit_index, int slot) {
  const Desk desk(session, data_index, fit_index);
  desk.panel().remark.clear();
  remark_fit(desk, desk.fits().Fits(slot).request, slot);
  follow_on_charts(session, fit_index, slot);
}

FitRequest request_of_panel(const Session& session, int fit_index) {
  const FitPanel& panel = *session.gFitForm(fit_index);
  const Model* model = find_model(panel.nModel);
  if (!model) throw RunTimeError(run_time::invalid_argument);
  return request_for(session, fit_index, *model, panel.nMethod);
}

}  // namespace tavlo
