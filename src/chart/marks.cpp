#include "chart/marks.h"

#include <algorithm>

#include "chart/symbols.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr int mark_symbol_size = 150;

Polyline line_of(const ChartItem& mark) {
  Polyline line;
  const int last = std::min({int{mark.nPoints}, mark.PointsX.bound(), mark.PointsY.bound()});
  for (int i = 0; i <= last; ++i)
    line.places.push_back({to_unit(mark.PointsX(i)), to_unit(mark.PointsY(i))});
  return line;
}

void draw_mark(Recorder& recorder, const ChartItem& mark) {
  const auto pen = Selected::pen(recorder, mark.LineStyle, mark.LineWidth, mark.LineColor);
  if (mark.nPoints > 0) recorder.add(line_of(mark));
  if (!mark.Text2.empty()) {
    const auto font = Selected::font(recorder, mark);
    recorder.text_colour(mark.TextColor);
    recorder.align(TextAlign::left);
    recorder.text({mark.Left, mark.Top}, mark.Text2);
  } else if (mark.nPoints <= 0) {
    const auto brush = Selected::brush(recorder, mark.Fill != 0, mark.FillColor);
    SymbolStamp(mark.Int3, mark_symbol_size).draw(recorder, {mark.Left, mark.Top});
  }
}

}  // namespace

void draw_marks(Canvas& canvas) {
  const Chart& chart = canvas.chart;
  const int last = std::min<int>(chart.nTexts, chart.Texts.bound());
  for (int i = 1; i <= last; ++i) draw_mark(canvas.recorder, chart.Texts(i));
}

}  // namespace tavlo
