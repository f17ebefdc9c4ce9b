#include "solver/fit_line.h"

#include <array>
#include <cmath>
#include <string>

#include "life/models.h"
#include "numerics/real.h"
#include "solver/best_answer.h"
#include "solver/parameter_translation.h"
#include "solver/points_loader.h"
#include "solver/starts_sentence.h"

namespace tavlo {
namespace {

struct SolverModel {
  int K;
  const char* error_text;
  const char* label;
  int rows;
};

const SolverModel* solver_model(int code) {
  static constexpr std::array<std::pair<int, SolverModel>, 5> table = {{
      {model_code::weibull2, {2, " 2 Par Weibull", "2 Par", 1}},
      {model_code::weibull3, {3, " 3 Par Weibull", "3 Par", 1}},
      {model_code::weibull4, {4, " 4 Par Weibull", "4 Par", 2}},
      {model_code::weibull5c, {5, " 5 Par Weibull (Competing Risk)", "5c ", 2}},
      {model_code::weibull7, {7, " 7 Par Weibull", "7 Par", 3}},
  }};
  for (const auto& [known, model] : table)
    if (known == (code & model_mask)) return &model;
  return nullptr;
}

struct SolverMethod {
  int method;
  const char* error_text;
};

SolverMethod solver_method_of(int code) {
  switch (code) {
    case method_code::x_on_y: return {solver_method::x_on_y, ", XonY"};
    case method_code::mle: return {solver_method::mle, ", MLE"};
    case method_code::y_on_x: return {solver_method::y_on_x, ", YonX (Special)"};
    default: throw RunTimeError(run_time::invalid_argument);
  }
}

/// What one fit is asked for and what becomes of it.
struct Task {
  Session& session;
  int data_index;
  int fit_index;
  std::int16_t model_code;
  std::int16_t method_code;
  const SolverModel* model = nullptr;
  SolverMethod method{0, ""};

  SolverState& state() const { return session.solver; }
  bool is_likelihood() const { return method.method == solver_method::mle; }
  bool is_censored() const { return is_likelihood() && state().data.CensoredLikelihood; }
};

void show(Session& session, const char* text) {
  session.ports.prompts.show({"", text, BoxIcon::none, BoxButtons::ok});
}

/// Solutions, and starts, of other points must not be starts for these.
void forget_solutions(Solver& solver) {
  XrefZero(solver);
  constexpr int work_method = 0;
  for (int K = 0; K <= 7; ++K) solver.table(K, work_method, 0) = 0;
  for (auto& candidates : solver.state.candidates) candidates.clear();
}

void load(Task& task) {
  SolverState& state = task.state();
  state.data.K = task.model->K;
  state.data.Method = task.method.method;
  state.data.TransMode = 1;
  state.progress_flag = -1;
  Solver solver{state, task.session.errors, task.session.ports.prompts,
                task.session.ports.event_loop, task.session.ports.clock};
  if (load_points(task.session.gData(task.data_index), state)) forget_solutions(solver);
}

/// False after a Cancel.
bool solve(Task& task) {
  SolverState& state = task.state();
  Solver solver{state, task.session.errors, task.session.ports.prompts,
                task.session.ports.event_loop, task.session.ports.clock};
  ParameterVector X{};
  const int status = find_best_answer(solver, X);
  if (status >= 0 && !solver.aborted()) return true;
  forget_solutions(solver);  // what a cancelled fit leaves is no start either
  state.loaded.clear();
  return false;
}

int slot_for(Task& task) {
  FitSet& fits = task.session.gFit(task.fit_index);
  if (const int slot = find_slot(fits, task.model_code, task.method_code)) return slot;
  FitResult fit = fits.Fits(0);
  fit.Status = FitStatus::not_calculated;
  fits.Fits.resize(fits.nFits);
  fits.Fits.push_back(std::move(fit));
  return ++fits.nFits;
}

/// "W4P/MLEc 4 Par"; built anew each time, or it would grow.
std::string label_of(const Task& task) {
  return fs_ModelNames(task.model_code, task.method_code).short_name +
         (task.is_censored() ? "c " : " ") + task.model->label;
}

bool has_lives(const SolverParams& p, int K) {
  if (!(p.EtaA > 0)) return false;
  if ((K == 4 || K == 7) && !(p.EtaB > 0)) return false;
  return !(K == 5 || K == 7) || p.EtaC > 0;
}

double first_failure(const Task& task) {
  const DataSet& set = task.session.gData(task.data_index);
  for (int i = 1; i <= set.Count; ++i)
    if (set.Points(i).Fails > 0) return static_cast<double>(set.Points(i).X);
  return 0;
}

/// Why the answer may not stand; empty when it may. W2P always may.
std::string refusal_of(const Task& task, double quality) {
  const SolverParams& p = task.state().params;
  if (task.model->K == 2) return "";
  if (!has_lives(p, task.model->K)) return "a characteristic life came out as 0";
  if (task.model->K == 3 && !(p.Extra < first_failure(task)))
    return "the minimum life lies above the first failure";
  if (task.is_likelihood() && quality > 0)
    return "Ln(L) is above 0, as the times are small numbers; enter them in a smaller unit, such "
           "as "
           "hours for days";
  if (task.is_likelihood() && !(quality <= 0)) return "the likelihood is not defined";
  if (!task.is_likelihood() && !(quality > 0 && quality <= 1))
    return "the line is worse than no line";
  if (!task.state().starts.sound)
    return "the model has more parameters than the data support: its best answers spend a "
           "population on less than two failures or on a spike";
  return "";
}

FitParam population(double eta, double beta, double fraction, double t0, std::int32_t applies) {
  return {.Scale = (1 / Real(eta)).value(),
          .Fraction = fraction,
          .Shape = beta,
          .T0 = t0,
          .Applies = applies};
}

/// The populations in the order in which fits are stored.
Slots<FitParam> rows_of(const SolverParams& p, int K) {
  constexpr std::int32_t in_first = 1;
  constexpr std::int32_t in_both = 3;
  const bool mixture = K == 5 || K == 7;
  Slots<FitParam> rows;
  if (mixture) rows.push_back(population(p.EtaC, p.BetaC, p.Extra, 0, in_first));
  rows.push_back(population(p.EtaA, p.BetaA, mixture ? 1 - p.Extra : 1.0, K == 3 ? p.Extra : 0.0,
                            mixture ? in_both : in_first));
  if (K == 4 || K == 7)
    rows.push_back(population(p.EtaB, p.BetaB, 0, 0, mixture ? in_both : in_first));
  return rows;
}

/// Writes the answer; the reason when a gate refuses it.
std::string store(Task& task) {
  SolverState& state = task.state();
  const int K = task.model->K;
  FitResult& fit = task.session.gFit(task.fit_index).Fits(slot_for(task));
  fit.Quality = state.table(K, task.method.method, 0);
  fit.ModelCode = task.model_code;
  fit.Method = task.method_code;
  fit.Label = label_of(task);
  fit.starts.reset();
  std::string refusal = refusal_of(task, fit.Quality);
  if (!refusal.empty()) return refusal;
  fit.Rows = rows_of(state.params, K);
  fit.nRows = fit.Rows.bound();
  fit.Status = FitStatus::calculated;
  if (K > 2) fit.starts = state.starts;
  return "";
}

bool leaves_suspensions_out(const Task& task) {
  const DataPoint& totals = task.session.gData(task.data_index).Points(0);
  return task.is_likelihood() && !task.is_censored() && totals.Susps > 0;
}

/// One line for the status panel, since each new one replaces the last.
void tell(Task& task, const std::string& refusal) {
  std::string text;
  const auto add = [&text](const std::string& part) {
    if (!part.empty()) text += (text.empty() ? "" : " ") + part;
  };
  const FitSet& fits = task.session.gFit(task.fit_index);
  if (!refusal.empty()) {
    add(label_of(task) + " refused: " + refusal + ".");
  } else {
    add(starts_sentence(fits.Fits(find_slot(fits, task.model_code, task.method_code))));
  }
  if (leaves_suspensions_out(task)) add("suspensions are not in this likelihood");
  task.state().remark = text;
  if (!text.empty()) task.session.ports.views.status(text);
}

void run(Task& task) {
  task.state().abort_flag = 0;  // of a fit that was cancelled before
  const DataPoint& totals = task.session.gData(task.data_index).Points(0);
  if (!(totals.Fails + totals.Susps >= 1)) {
    show(task.session, "'D ebug. Need check here");
    return;
  }
  task.model = solver_model(task.model_code);
  if (!task.model) {
    show(task.session, "model not programmed");
    return;
  }
  task.method = solver_method_of(task.method_code);
  load(task);
  if (solve(task)) tell(task, store(task));
}

}  // namespace

void Fit_Line(Session& session, int data_index, int fit_index, std::int16_t model_code,
              std::int16_t method_code) {
  Task task{session, data_index, fit_index, model_code, method_code};
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"Fit line Error: ",
                  "Data points: " + std::to_string(task.state().data.N) +
                      ", Fit:" + std::to_string(fit_index) +
                      ", model: " + (task.model ? task.model->error_text : "") +
                      ", Method: " + task.method.error_text,
                  "Fit_Line routine:"});
  };
  guarded(session.errors, words, [&] { run(task); });
}

}  // namespace tavlo
