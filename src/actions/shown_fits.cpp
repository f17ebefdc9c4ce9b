#include "actions/shown_fits.h"

#include <algorithm>

#include "chart/scales/chart_view.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

std::int16_t model_of(const FitSet& fits, int slot) {
  return slot >= 1 && slot <= fits.Fits.bound() ? fits.Fits(slot).ModelCode : std::int16_t{0};
}

}  // namespace

int chart_of_set(const Session& session, int fit_index) {
  const Project& project = session.project;
  for (int i = 1; i <= project.charts.bound(); ++i)
    if (project.charts(i).UniqueId == session.chart_at_work &&
        shows_set(project, project.charts(i), fit_index))
      return i;
  int chart = project.charts.bound();
  while (chart > 0 && !shows_set(project, project.charts(chart), fit_index)) --chart;
  return chart > 0 ? chart : project.charts.bound();
}

int followed_fit(const Session& session, int fit_index) {
  const Project& project = session.project;
  const int chart = chart_of_set(session, fit_index);
  const int row = chart == 0 ? 0 : following_row(project, project.charts(chart), fit_index);
  return row == 0 ? 0 : project.charts(chart).Markers(row).FitNumber;
}

// Another model is seen as a whole first: the part that the chart shows was chosen for the
// one before.
void follow_on_chart(const Project& project, Chart& chart, int fit_index, int slot) {
  const FitSet& fits = project.fits(fit_index);
  const int row = following_row(project, chart, fit_index);
  const int before = row == 0 ? 0 : chart.Markers(row).FitNumber;
  if (model_of(fits, before) != model_of(fits, slot)) end_zoom(chart);
  follow_fit(project, chart, fit_index, slot);
  if (const Model* model = find_model(model_of(fits, slot))) use_paper_of(chart, *model);
}

void follow_on_charts(Session& session, int fit_index, int slot) {
  if (session.settings.ShowLast) pick_fit(session, fit_index, slot);
}

void pick_fit(Session& session, int fit_index, int slot) {
  Project& project = session.project;
  const int at_work = chart_of_set(session, fit_index);
  for (int i = 1; i <= project.charts.bound(); ++i)
    if (i == at_work || following_row(project, project.charts(i), fit_index) != 0)
      follow_on_chart(project, project.charts(i), fit_index, slot);
}

std::optional<std::int32_t> shown_colour(const Session& session, int fit_index, int slot) {
  const Project& project = session.project;
  const int chart = chart_of_set(session, fit_index);
  const int row = chart == 0 ? 0 : row_of_fit(project, project.charts(chart), fit_index, slot);
  if (row == 0) return std::nullopt;
  return project.charts(chart).Markers(row).LineColor;
}

void set_shown_colour(Session& session, int fit_index, int slot, std::int32_t colour) {
  Project& project = session.project;
  const int chart = chart_of_set(session, fit_index);
  const int row = chart == 0 ? 0 : row_of_fit(project, project.charts(chart), fit_index, slot);
  if (row == 0) return;
  project.charts(chart).Markers(row).LineColor = colour;
  session.step = "Colour of Fit";
}

void set_shown(Session& session, int fit_index, int slot, bool shown) {
  const int chart = chart_of_set(session, fit_index);
  if (chart == 0 || slot < 1 || slot > session.project.fits(fit_index).nFits) return;
  (shown ? show_fit : hide_fit)(session.project, session.project.charts(chart), fit_index, slot);
  session.step = shown ? "Show Fit" : "Hide Fit";
}

}  // namespace tavlo
