#include "chart/make_chart.h"

#include "chart/axis_grid.h"
#include "chart/boxes.h"
#include "chart/canvas.h"
#include "chart/data_points.h"
#include "chart/fit_line.h"
#include "chart/marks.h"
#include "chart/parameter_box.h"
#include "chart/plot_sets.h"
#include "chart/queued_prompts.h"
#include "chart/titles.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

constexpr std::int32_t widest_chart = 32767;  // what a metafile's header can say

/// The reports of one composition: held back, one box for each text, and then
/// added to those of the session.
class HeldReports {
 public:
  explicit HeldReports(Session& session)
      : session_(session), prompts_(session.ports.prompts), errors_(prompts_, session.ports.clock) {
    errors_.gErrMode = session.errors.gErrMode;
    errors_.log_limit = session.errors.log_limit;
    errors_.gErrLog.swap(session.errors.gErrLog);
  }

  ~HeldReports() { session_.errors.gErrLog.swap(errors_.gErrLog); }
  HeldReports(const HeldReports&) = delete;
  HeldReports& operator=(const HeldReports&) = delete;

  QueuedPrompts& prompts() { return prompts_; }
  ErrorReporter& errors() { return errors_; }

 private:
  Session& session_;
  QueuedPrompts prompts_;
  ErrorReporter errors_;
};

void check_chart(const Chart& chart) {
  if (chart.Boxes.bound() < chart_item::date || chart.Axes.bound() < 1)
    throw RunTimeError(run_time::subscript);
  for (const int index : {chart_item::chart_box, chart_item::plot_box}) {
    const ChartItem& box = chart.Boxes(index);
    if (box.Width <= 0 || box.Height <= 0) throw RunTimeError(run_time::invalid_argument);
    if (box.Width > widest_chart || box.Height > widest_chart)
      throw RunTimeError(run_time::overflow);
  }
}

void draw_plot_set(Canvas& canvas, const Session& session, const PlotSet& set) {
  if (set.fit) DrawData_One_Line(canvas, *set.marker, *set.fit);
  draw_data_points(canvas, *set.marker, session.gData(set.data_index));
}

/// Points and lines alone, before their place in the drawing comes. What fails
/// here fails again when they are drawn, and is told then.
DrawingRecord content_of(const Canvas& canvas, const Session& session,
                         const std::vector<PlotSet>& sets) {
  DrawingRecord content;
  Recorder recorder(content);
  QueuedPrompts unheard(canvas.prompts);
  ErrorReporter unread(unheard, session.ports.clock);
  Canvas trial{recorder, canvas.chart, canvas.text_measure, unheard, unread};
  for (const PlotSet& set : sets) draw_plot_set(trial, session, set);
  return content;
}

void compose(Canvas& canvas, Session& session) {
  const std::vector<PlotSet> sets = plot_sets(session, canvas.chart);
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::chart_box));
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::plot_box));
  draw_titles(canvas, session.ports.clock.now());
  DrawGrid(canvas, false);
  DrawGrid(canvas, true);
  draw_parameter_box(canvas, session, sets, content_of(canvas, session, sets));
  draw_marks(canvas);
  for (const PlotSet& set : sets) draw_plot_set(canvas, session, set);
}

}  // namespace

DrawingRecord fl_Make_WMF(Session& session, int chart_index) {
  DrawingRecord record;
  HeldReports reports(session);
  const auto words = [](ErrorReporter& reporter) { reporter.add_lines({"fl_Make_WMF_Error: "}); };
  guarded(reports.errors(), words, [&] {
    const Chart& chart = session.gChart(chart_index);
    check_chart(chart);
    record.width = chart.Boxes(chart_item::chart_box).Width;
    record.height = chart.Boxes(chart_item::chart_box).Height;
    Recorder recorder(record);
    recorder.add(drawing::TransparentBackground{});
    Canvas canvas{recorder, chart, session.ports.text_measure, reports.prompts(), reports.errors()};
    compose(canvas, session);
  });
  reports.prompts().show_all();
  return record;
}

}  // namespace tavlo
