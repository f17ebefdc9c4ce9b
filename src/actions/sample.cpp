#include "actions/sample.h"

#include "actions/busy_panel.h"
#include "actions/busy_pointer.h"
#include "actions/dispatch.h"
#include "actions/intake.h"
#include "actions/log_table.h"
#include "actions/new_project.h"
#include "actions/pasted_rows.h"
#include "actions/planned_test.h"
#include "actions/reports.h"
#include "actions/sample_words.h"
#include "actions/shown_fits.h"
#include "actions/work.h"
#include "analyses/sample_text.h"
#include "files/point_list.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr const char* sample_line_end = "\r\n";

std::array<std::string, WichmannHill::streams> as_texts(const WichmannHill& random) {
  std::array<std::string, WichmannHill::streams> texts;
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = std::to_string(random.states()[i]);
  return texts;
}

/// A sample on its way into the project.
struct Drawn {
  std::string seeds;  ///< as the log tells them
  std::vector<SampleRow> rows;
  std::string text;  ///< in the data notation
  std::int64_t suspended = 0;
  std::int64_t negative = 0;  ///< failures that the notation makes suspensions
};

/// A negative time has no form of its own where a minus marks a suspension.
void suspend_negative(Drawn& drawn) {
  for (SampleRow& row : drawn.rows) {
    if (!(row.time < 0)) continue;
    drawn.negative += row.failures > 0;
    row = {-row.time, 0, row.failures + row.suspensions};
  }
}

/// Error 6 for a time that data can't hold.
Drawn draw(Session& session, const RunPlan& plan, WichmannHill& random) {
  const bool minus_suspends = session.settings.NegativeSuspension;
  const char* const mark = minus_suspends ? "-" : ">";
  Drawn drawn;
  for (const std::string& seed : as_texts(random))
    drawn.seeds += (drawn.seeds.empty() ? "Seeds: " : "\t") + seed;
  if (plan.sample.size < 1) return drawn;
  const auto add = [&drawn](std::string_view text) {
    drawn.text += text;
    return true;
  };
  const DrawnPoints points = draw_points(plan.sample, random, session.ports.entropy);
  drawn.suspended = points.suspended.count;
  drawn.rows = points.rows();
  if (plan.inspections.is_none()) {
    write_points(points, mark, sample_line_end, add);
    for (SampleRow& row : drawn.rows) row.time = written_time(row.time);
  } else {
    find_at(plan.inspections, drawn.rows);
    write_rows(drawn.rows, mark, sample_line_end, add);
  }
  if (minus_suspends) suspend_negative(drawn);
  return drawn;
}

/// Nothing, after a box, for a sample with a time that data can't hold.
std::optional<Drawn> guarded_draw(Session& session, const RunPlan& plan, WichmannHill& random) {
  try {
    return draw(session, plan, random);
  } catch (const RunTimeError& fault) {
    if (fault.number() != run_time::overflow) throw;
    refuse_sample(session, std::string(words_of_time_out_of_range) + ".");
    return std::nullopt;
  }
}

/// The sample in a project of its own; a panel without a fit offers the method of the one before.
void put_in_place(Session& session, const SampleForm& form, const Drawn& drawn) {
  Project project = begun_project(session);
  fill_data_set({drawn.rows, {}, {}}, project.data(1));
  replace_project(session, std::move(project), {});
  session.gFitForm(1)->nMethod = form.method;
  session.gDataForm(1)->follow_rows();
  session.ports.clipboard.set_text({drawn.text, {}, {}});
  bool clean = true;
  CheckDirtyData(session, 1, clean);
}

/// The life as given: it stands where a fit stands, and the chart draws it.
void show_life(Session& session, const SamplePlan& plan) {
  if (plan.life.rows.empty() || !session.project.data(1).is_read()) return;
  FitRequest request;
  request.model = plan.life.model;
  request.method = plan.method;
  request.ranks = plan.ranks;
  FitSet& fits = session.project.fits(1);
  fits.Fits.push_back(given_record(request, plan.life, session.project.data(1).read_revision));
  fits.nFits = 1;
  const Model& model = *find_model(plan.life.model);
  FitPanel& panel = *session.gFitForm(1);
  panel.nModel = model.code;
  panel.txt_Custom = model.panel_formula;
  pick_fit(session, 1, 1);
}

void log_sample(Session& session, const SampleForm& form, const Drawn& drawn, std::int32_t size) {
  std::string words = "Monte Carlo Sample  N" + std::to_string(size);
  if (drawn.suspended > 0) words += "/S" + std::to_string(drawn.suspended);
  AppendLog(session, words + "\n" + drawn.seeds + "\n", false);
  log_table(session, table_of(session, form));
}

/// As the panel would make them; the chart shows them beside the life that was given.
void fit_sample(Session& session, const std::vector<FitRequest>& fits) {
  const BusyPanel busy(session, 1);
  FitPanel& panel = *session.gFitForm(1);
  for (const FitRequest& wanted : fits) {
    std::int16_t model = wanted.model;
    panel.censored = wanted.censored;
    Fit_Distribution(session, 1, 1, model, wanted.method, true, true);
  }
  const FitSet& made = session.project.fits(1);
  if (made.nFits > 1 && made.Fits(1).is_given) set_shown(session, 1, 1, true);
}

void tell(Session& session, const Drawn& drawn) {
  const DataSheet& sheet = *session.gDataForm(1);
  std::string words = words_of_rows(sheet, 1, sheet.last_row()) + ".";
  if (drawn.negative > 0)
    words += "  " + std::to_string(drawn.negative) + " negative times were read as suspensions.";
  session.ports.views.status(words);
}

void make(Session& session, SampleForm& form, const RunPlan& plan) {
  const BusyPointer busy(session.ports.views);
  WichmannHill random(session.random_states);
  enter_seeds(session, form.seeds, random);
  if (random.is_at_rest()) random.seed({-1, -1, -1, -1}, session.ports.entropy);
  WichmannHill of_runs = random;  // the first of them is the sample
  const auto drawn = guarded_draw(session, plan, random);
  if (!drawn) return;
  session.random_states = random.states();
  put_in_place(session, form, *drawn);
  show_life(session, plan.sample);
  log_sample(session, form, *drawn, plan.sample.size);
  fit_sample(session, form.fits);
  session.step = "Sample";
  if (plan.runs > 1) {
    const WichmannHill before = of_runs;
    make_planned_test(session, plan, of_runs);
    // Runs that were stopped at once leave the states behind the sample.
    if (of_runs.states() != before.states()) session.random_states = of_runs.states();
  }
  tell(session, *drawn);
}

}  // namespace

std::array<std::string, WichmannHill::streams> present_seeds(Session& session) {
  WichmannHill random(session.random_states);
  if (!random.is_seeded()) random.seed({-1, -1, -1, -1}, session.ports.entropy);
  session.random_states = random.states();
  return as_texts(random);
}

std::array<std::string, WichmannHill::streams> next_seeds(Session& session) {
  present_seeds(session);
  WichmannHill random(session.random_states);
  random.next(session.ports.entropy);
  session.random_states = random.states();
  return as_texts(random);
}

void make_sample_project(Session& session, SampleForm& form) {
  guarded(session.errors, error_words("Monte Carlo: ", "cmd_Sample_Click routine:"), [&] {
    present_seeds(session);
    if (const auto plan = plan_of(session, form)) make(session, form, *plan);
  });
}

}  // namespace tavlo
