#include "chart/compose/make_chart.h"

#include "chart/compose/queued_prompts.h"
#include "chart/parts/axis_grid.h"
#include "chart/parts/boxes.h"
#include "chart/parts/data_points.h"
#include "chart/parts/draw_marks.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/legend.h"
#include "chart/parts/parameter_box.h"
#include "chart/parts/plot_sets.h"
#include "chart/parts/titles.h"
#include "chart/record/canvas.h"
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

void add_words(ErrorReporter& reporter) { reporter.add_lines({"fl_Make_WMF_Error: "}); }

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
  if (set.fit && canvas.chart.SubPopulations) draw_sub_populations(canvas, *set.marker, *set.fit);
  draw_data_points(canvas, *set.marker, session.project.data(set.data_index));
}

/// Points and lines alone, before their place in the drawing comes: the boxes keep
/// off them.
DrawingRecord content_of(const Canvas& canvas, const Session& session,
                         const std::vector<PlotSet>& sets) {
  DrawingRecord content;
  Recorder recorder(content);
  Canvas apart{recorder, canvas.chart, canvas.text_measure, canvas.prompts, canvas.errors};
  for (const PlotSet& set : sets) draw_plot_set(apart, session, set);
  return content;
}

void compose(Canvas& canvas, Session& session) {
  const std::vector<PlotSet> sets = plot_sets(session, canvas.chart);
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::chart_box));
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::plot_box));
  draw_titles(canvas, session.ports.clock.now());
  DrawGrid(canvas, false);
  DrawGrid(canvas, true);
  DrawingRecord content = content_of(canvas, session, sets);
  draw_parameter_box(canvas, session, sets, content);
  draw_marks(canvas);
  canvas.recorder.append(content);
  draw_legend(canvas, session, sets, content);
}

}  // namespace

DrawingRecord compose_chart(Session& session, const Chart& chart, Prompts& prompts,
                            ErrorReporter& errors) {
  DrawingRecord record;
  guarded(errors, add_words, [&] {
    check_chart(chart);
    record.width = chart.Boxes(chart_item::chart_box).Width;
    record.height = chart.Boxes(chart_item::chart_box).Height;
    Recorder recorder(record);
    recorder.add(drawing::TransparentBackground{});
    Canvas canvas{recorder, chart, session.ports.text_measure, prompts, errors};
    compose(canvas, session);
  });
  return record;
}

DrawingRecord fl_Make_WMF(Session& session, int chart_index) {
  DrawingRecord record;
  HeldReports reports(session);
  guarded(reports.errors(), add_words, [&] {
    record = compose_chart(session, session.project.charts(chart_index), reports.prompts(),
                           reports.errors());
  });
  reports.prompts().show_all();
  return record;
}

}  // namespace tavlo
