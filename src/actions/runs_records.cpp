#include "actions/runs_records.h"

#include <algorithm>

#include "actions/read_rows.h"
#include "actions/reports.h"
#include "actions/runs_charts.h"
#include "actions/runs_words.h"
#include "chart/parts/legend.h"
#include "chart/scales/chart_view.h"
#include "files/point_list.h"
#include "files/project_writer.h"
#include "numerics/count_text.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

std::string thinning_words(std::size_t most, std::int32_t runs) {
  return grouped(static_cast<std::int64_t>(most)) + " of up to " + grouped(runs) +
         " values a set, evenly spaced in their order";
}

std::string unused_title(const Project& project, const std::string& title) {
  const auto is_taken = [&](const std::string& name) {
    return std::any_of(project.data.begin() + 1, project.data.end(),
                       [&](const DataSet& data) { return data.Title == name; });
  };
  std::string name = title;
  for (int number = 2; is_taken(name); ++number) name = title + " (" + std::to_string(number) + ")";
  return name;
}

/// One failure each, with the digits that a file keeps of a time.
DataRows rows_of(const std::vector<double>& values) {
  DataRows rows;
  for (const double value : values)
    rows.rows.push_back({ProjectWriter::as_read(static_cast<float>(value)), 1, 0});
  return rows;
}

/// The first choice of the panel is the line of the chart's paper.
void choose_line(FitChoices& panel, bool is_log) {
  const Model* model = find_model(is_log ? model_code::lognormal : model_code::normal);
  panel.nModel = model->code;
  panel.txt_Custom = model->panel_formula;
  panel.nMethod = method_code::x_on_y;
}

/// The data set with its fits, on the chart alone. False where it could not be made.
bool add_set(Session& session, const RunSet& set, int chart_index, bool is_log) {
  const int data_index = New_frm_Data(session);
  const int fit_index = New_frm_Fit(session);
  if (data_index == 0 || fit_index == 0) return false;
  Project& project = session.project;
  DataSet& data = project.data(data_index);
  project.fits(fit_index).Title = unused_title(project, set.title);
  data.Title = project.fits(fit_index).Title;
  fill_data_set(rows_of(set.values), data);
  read_rows(session, data_index);
  choose_line(*session.gFitForm(fit_index), is_log);
  for (Chart& chart : project.charts) forget_data(chart, data.UniqueId);
  add_plot_set(project.charts(chart_index), data.UniqueId, project.fits(fit_index).UniqueId, 1);
  return true;
}

/// Until the person lets them follow the data.
void hold_limits(Chart& chart, Limits limits) {
  set_automatic(chart, 0, &ChartAxis::AutoMin, false);
  set_automatic(chart, 0, &ChartAxis::AutoMax, false);
  set_limit(chart, 0, &ChartAxis::Min, limits.low);
  set_limit(chart, 0, &ChartAxis::Max, limits.high);
}

void set_axes(Chart& chart, const RunAxis& axis) {
  choose_scale(chart, 0, axis.is_log ? x_scale::log : x_scale::linear);
  choose_scale(chart, 1, y_scale::normal);
  follow_data(chart);
  if (axis.limits) hold_limits(chart, *axis.limits);
}

std::string beyond_words(std::size_t count) {
  return ", " + grouped(static_cast<std::int64_t>(count)) +
         (count == 1 ? " value beyond the axis" : " values beyond the axis");
}

/// A chart without sets; 0 where it could not be made.
int add_chart(Session& session, const RunChart& wanted, const RunAxis& axis,
              const std::string& title, const std::string& sub_title) {
  const int index = New_frm_Chart(session);
  if (index == 0) return 0;
  Chart& chart = session.project.charts(index);
  for (const DataSet& data : session.project.data) forget_data(chart, data.UniqueId);
  chart.Boxes(chart_item::main_title).Text2 = title;
  chart.Boxes(chart_item::sub_title).Text2 =
      sub_title + (axis.beyond > 0 ? beyond_words(axis.beyond) : "");
  chart.Boxes(chart_item::x_title).Text2 = wanted.meaning;
  chart.Boxes(chart_item::y_title).Text2 = "Runs up to this value, CDF%";
  chart.Boxes(chart_item::legend).Mode = legend_mode::always;
  set_axes(chart, axis);
  return index;
}

/// Where a person finds the charts, by their names in the tree.
void log_places(Session& session, const std::vector<RunChart>& charts,
                const std::vector<int>& indexes) {
  std::string places;
  for (std::size_t i = 0; i < charts.size(); ++i)
    places += (i == 0 ? "" : ", ") + charts[i].word + " on Chart" + std::to_string(indexes[i]);
  if (!places.empty()) AppendLog(session, "Charts of the runs: " + places + "\n", false);
}

}  // namespace

void add_run_records(Session& session, const RunPlan& plan, const RunsReport& report,
                     std::size_t most_rows) {
  std::vector<RunChart> charts = run_charts(report);
  std::vector<RunAxis> axes;
  for (const RunChart& chart : charts)
    axes.push_back(run_axis(chart, session.errors, session.settings.PlotBorderZone));
  std::string sub_title = plan_words(plan);
  if (const auto most = thin_to(most_rows, charts)) {
    sub_title = thinning_words(*most, report.runs);
    AppendLog(session, "In data sets and charts stand " + sub_title + "\n", false);
  }
  const std::string of_runs = " of " + grouped(report.runs) + " runs";
  std::vector<int> indexes;  // charts stand first, so that no set begins on one of another word
  for (std::size_t i = 0; i < charts.size(); ++i)
    indexes.push_back(add_chart(session, charts[i], axes[i], charts[i].word + of_runs, sub_title));
  if (std::find(indexes.begin(), indexes.end(), 0) != indexes.end()) return;  // which was told
  log_places(session, charts, indexes);
  for (std::size_t i = 0; i < charts.size(); ++i)
    for (const RunSet& set : charts[i].sets)
      if (!add_set(session, set, indexes[i], axes[i].is_log)) return;
}

}  // namespace tavlo
