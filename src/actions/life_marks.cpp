#include "actions/life_marks.h"

#include <algorithm>

#include "actions/shown_fits.h"
#include "chart/compose/answer_marks.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

AskedValue asked_by(const LifeAnswer& answer) {
  switch (answer.kind) {
    case LifeAnswerKind::b_life: return {Asked::share, answer.asked / 100};
    case LifeAnswerKind::reliability: return {Asked::time, answer.asked};
    case LifeAnswerKind::mean: break;
  }
  return {Asked::mean, 0};
}

/// What the fit of the table says on the chart; nothing where the chart does not show it.
std::optional<FitSaying> saying_on(const Session& session, int fit_index, const Chart& chart,
                                   const LifeTable& table, const LifeAnswer& answer) {
  const FitResult& fit = session.project.fits(fit_index).Fits(table.slot);
  const std::int32_t data_id =
      session.project.data(data_of_fits(session.project, fit_index)).UniqueId;
  const auto all = sayings(session, chart, Readout(session, chart), asked_by(answer));
  const auto found = std::find_if(all.begin(), all.end(), [&](const FitSaying& saying) {
    return saying.data_id == data_id && saying.label == label_of(fit);
  });
  return found == all.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::string why_not_marked(const Session& session, int fit_index, const LifeTable& table,
                           const LifeAnswer& answer) {
  if (table.slot == 0 || answer.answer.empty()) return "There is no up-to-date fit to mark.";
  if (!answer.time) return "This answer is no time: it has no place on a chart.";
  const int chart = chart_of_set(session, fit_index);
  if (chart == 0) return "The project has no chart.";
  const Chart& shown = session.project.charts(chart);
  const auto saying = saying_on(session, fit_index, shown, table, answer);
  if (!saying) return "The chart does not show this fit.";
  if (!saying->place) return "It lies outside the axes of the chart; change their limits first.";
  if (has_answer_mark(shown, asked_by(answer), *saying)) return "It is marked already.";
  return {};
}

void mark_on_chart(Session& session, int fit_index, const LifeTable& table,
                   const LifeAnswer& answer) {
  if (!why_not_marked(session, fit_index, table, answer).empty()) return;
  Chart& chart = session.project.charts(chart_of_set(session, fit_index));
  add_answer_mark(chart, asked_by(answer), *saying_on(session, fit_index, chart, table, answer));
  session.step = "Mark " + answer.name;
}

}  // namespace tavlo
