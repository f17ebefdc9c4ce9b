#include "chart/compose/make_chart.h"

#include <algorithm>

#include "chart/compose/answer_marks.h"
#include "chart/compose/queued_prompts.h"
#include "chart/parts/axis_grid.h"
#include "chart/parts/boxes.h"
#include "chart/parts/data_points.h"
#include "chart/parts/draw_marks.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/legend.h"
#include "chart/parts/marks.h"
#include "chart/parts/parameter_box.h"
#include "chart/parts/plot_sets.h"
#include "chart/parts/titles.h"
#include "chart/record/canvas.h"
#include "chart/record/spelled_letters.h"
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

/// Points stand on the lines, but a crowd of them would hide its line and lies below.
void draw_plot_sets(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets) {
  DrawingRecord points_above;
  Recorder above(points_above);
  Canvas apart{above, canvas.chart, canvas.text_measure, canvas.prompts, canvas.errors};
  for (const PlotSet& set : sets) {
    const DataSet& data = session.project.data(set.data_index);
    draw_data_points(data.sample().size() < crowd_of_points ? apart : canvas, *set.marker, data);
  }
  for (const PlotSet& set : sets) {
    if (!set.fit) continue;
    if (canvas.chart.SubPopulations) draw_sub_populations(canvas, *set.marker, *set.fit);
    DrawData_One_Line(canvas, *set.marker, *set.fit);
  }
  canvas.recorder.append(points_above);
}

/// Points, lines and marks alone: the boxes keep off them.
struct Content {
  DrawingRecord plotted;  ///< with the lines of answers, which run to the axes below boxes
  DrawingRecord marks;
};

Content content_of(const Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets) {
  Content content;
  Recorder plotted(content.plotted);
  Canvas plot{plotted, canvas.chart, canvas.text_measure, canvas.prompts, canvas.errors};
  draw_plot_sets(plot, session, sets);
  draw_answer_lines(plot);
  Recorder marks(content.marks);
  Canvas apart{marks, canvas.chart, canvas.text_measure, canvas.prompts, canvas.errors};
  draw_marks(apart);
  return content;
}

/// What the boxes keep off; a text is known by its bounds alone.
Obstacles obstacles_in(const Canvas& canvas, const Content& content) {
  Obstacles obstacles({&content.plotted, &content.marks});
  for (int i = 1; i <= std::min(canvas.chart.nTexts, canvas.chart.Texts.bound()); ++i)
    if (const ChartItem& mark = canvas.chart.Texts(i); !mark.Text2.empty())
      obstacles.add(mark_bounds(canvas.text_measure, mark));
  return obstacles;
}

void compose(Canvas& canvas, Session& session) {
  const std::vector<PlotSet> sets = plot_sets(session, canvas.chart);
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::chart_box));
  draw_box(canvas.recorder, canvas.chart.Boxes(chart_item::plot_box));
  draw_titles(canvas, session.ports.clock.now(), names_of_data(session, sets));
  DrawGrid(canvas, false);
  DrawGrid(canvas, true);
  const Content content = content_of(canvas, session, sets);
  const Obstacles obstacles = obstacles_in(canvas, content);
  canvas.recorder.append(content.plotted);
  // The boxes stand on their own ground: where a chart is full they hide a line sooner
  // than that it runs through their words.
  draw_parameter_box(canvas, session, sets, obstacles);
  draw_legend(canvas, session, sets, obstacles);
  canvas.recorder.append(content.marks);
  if (is_out_of_date(session, canvas.chart)) draw_out_of_date(canvas);
}

DrawingRecord composed(Session& session, const Chart& chart, TextMeasure& text_measure,
                       Prompts& prompts, ErrorReporter& errors) {
  DrawingRecord record;
  guarded(errors, add_words, [&] {
    check_chart(chart);
    record.width = chart.Boxes(chart_item::chart_box).Width;
    record.height = chart.Boxes(chart_item::chart_box).Height;
    Recorder recorder(record);
    recorder.add(drawing::TransparentBackground{});
    const Chart answered = with_answers(session, chart);
    Canvas canvas{recorder, answered, text_measure, prompts, errors};
    compose(canvas, session);
  });
  return record;
}

/// What goes wrong is told when all is drawn.
DrawingRecord drawn(Session& session, int chart_index, TextMeasure& text_measure) {
  DrawingRecord record;
  HeldReports reports(session);
  guarded(reports.errors(), add_words, [&] {
    record = composed(session, session.project.charts(chart_index), text_measure, reports.prompts(),
                      reports.errors());
  });
  reports.prompts().show_all();
  return record;
}

}  // namespace

DrawingRecord compose_chart(Session& session, const Chart& chart, Prompts& prompts,
                            ErrorReporter& errors) {
  return composed(session, chart, session.ports.text_measure, prompts, errors);
}

DrawingRecord fl_Make_WMF(Session& session, int chart_index) {
  return drawn(session, chart_index, session.ports.text_measure);
}

DrawingRecord make_metafile_drawing(Session& session, int chart_index) {
  SpelledTextMeasure spelled(session.ports.text_measure);
  return drawn(session, chart_index, spelled);
}

DrawingRecord with_out_of_date_sign(Session& session, const Chart& chart,
                                    const DrawingRecord& drawing) {
  DrawingRecord signed_one;
  signed_one.width = drawing.width;
  signed_one.height = drawing.height;
  signed_one.areas = drawing.areas;
  Recorder recorder(signed_one);
  recorder.append(drawing);
  Canvas canvas{recorder, chart, session.ports.text_measure, session.ports.prompts, session.errors};
  draw_out_of_date(canvas);
  return signed_one;
}

}  // namespace tavlo
