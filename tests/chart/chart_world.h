// Chart world: a session with data that is ranked and a fit that is given, ready
// to be composed, and questions to the drawing that comes of it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "chart/compose/auto_scale.h"
#include "chart/compose/make_chart.h"
#include "chart/record/font_metrics.h"
#include "life/models.h"
#include "numerics/unheard_reports.h"
#include "project/ranking.h"
#include "support/test_world.h"

namespace tavlo::test {

/// Failure times with ten units left at 500, of a published Weibull example.
inline std::vector<Point> published_times() {
  std::vector<Point> points;
  for (const double x : {54, 187, 216, 240, 244, 335, 361, 373, 375, 386}) points.push_back({x});
  points.push_back({500, 0, 10});
  return points;
}

inline DataSet ranked(const std::vector<Point>& points) {
  UnheardReports reports;
  DataSet data = make_data(points);
  Make_Ranks(reports.errors, true, data);
  return data;
}

inline FitResult fit_of(int code, std::vector<FitParam> rows) {
  FitResult fit;
  fit.ModelCode = static_cast<std::int16_t>(code);
  fit.Status = FitStatus::calculated;
  fit.nRows = static_cast<int>(rows.size());
  fit.Rows.resize(fit.nRows);
  std::copy(rows.begin(), rows.end(), fit.Rows.begin() + 1);
  return fit;
}

struct ChartWorld {
  ChartWorld()
      : session(Ports{world.prompts, world.event_loop, world.clock, world.entropy, world.clipboard,
                      measure, world.files, world.host, world.views, world.progress, world.timer}) {
  }

  TestWorld world;
  MetricTextMeasure measure;
  Session session;

  Chart& chart() { return session.project.charts(1); }

  void show(DataSet data) {
    data.UniqueId = session.project.data(1).UniqueId;
    data.Title = session.project.data(1).Title;
    session.project.data(1) = std::move(data);
  }
  /// The first fit of the set, on paper of its own scales.
  void show(const FitResult& fit) {
    session.project.fits(1).nFits = 1;
    session.project.fits(1).Fits.resize(1);
    session.project.fits(1).Fits(1) = fit;
    chart().Axes(0).ScaleType = static_cast<std::int16_t>(fit.ModelCode & 7);
    chart().Axes(1).ScaleType = static_cast<std::int16_t>(fit.ModelCode & 56);
  }
  /// The published times and the line of their fit.
  void show_published() {
    show(ranked(published_times()));
    show(fit_of(model_code::weibull2, {{1 / 606.5, 1, 1.72, 0, 1}}));
  }
  DrawingRecord draw() {
    SetAutoScale(session, chart());
    return fl_Make_WMF(session, 1);
  }
  DrawingRecord draw_metafile() {
    SetAutoScale(session, chart());
    return make_metafile_drawing(session, 1);
  }
};

/// A chart of so many data sets, each with a fit of its own.
struct SetsWorld : ChartWorld {
  explicit SetsWorld(int count) {
    for (int i = 1; i <= count; ++i) {
      if (i > 1) New_frm_Data(session);
      if (i > 1) New_frm_Fit(session);
      const double eta = 100.0 * i;
      DataSet data = ranked({{0.3 * eta}, {0.7 * eta}, {1.1 * eta}});
      data.UniqueId = session.project.data(i).UniqueId;
      data.Title = "Rig " + std::to_string(i);
      session.project.data(i) = std::move(data);
      session.project.fits(i).nFits = 1;
      session.project.fits(i).Fits.resize(1);
      session.project.fits(i).Fits(1) = fit_of(model_code::weibull2, {{1 / eta, 1, 2, 0, 1}});
    }
  }
  ChartItem& legend() { return chart().Boxes(chart_item::legend); }
};

/// All records of one kind, in order.
template <class Kind>
std::vector<Kind> all(const DrawingRecord& drawing) {
  std::vector<Kind> found;
  for (const drawing::Record& record : drawing.records)
    if (const Kind* kind = std::get_if<Kind>(&record)) found.push_back(*kind);
  return found;
}

inline std::vector<std::string> texts(const DrawingRecord& drawing) {
  std::vector<std::string> found;
  for (const drawing::Text& text : all<drawing::Text>(drawing)) found.push_back(text.utf8);
  return found;
}

inline bool has_text(const DrawingRecord& drawing, const std::string& text) {
  const auto found = texts(drawing);
  return std::find(found.begin(), found.end(), text) != found.end();
}

}  // namespace tavlo::test
