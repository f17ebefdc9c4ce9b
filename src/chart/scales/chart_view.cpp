#include "chart/scales/chart_view.h"

namespace tavlo {

namespace {

AxisView view_of(const ChartAxis& axis) {
  return {axis.AutoMax, axis.AutoMin, axis.Max, axis.Min, axis.ScaleType};
}

void restore(ChartAxis& axis, const AxisView& view) {
  axis.AutoMax = view.AutoMax;
  axis.AutoMin = view.AutoMin;
  axis.Max = view.Max;
  axis.Min = view.Min;
  axis.ScaleType = view.ScaleType;
}

void restore(Chart& chart, const ChartView& view) {
  restore(chart.Axes(0), view[0]);
  restore(chart.Axes(1), view[1]);
}

void hold(ChartAxis& axis, Limits limits) {
  axis.AutoMin = axis.AutoMax = false;
  axis.Min = limits.low;
  axis.Max = limits.high;
}

int code_of(const Chart& chart, int index) {
  return index == 0 ? x_scale_of(chart.Axes(0)) : y_scale_of(chart.Axes(1));
}

/// What the person sets is what they want to see: the steps before it are forgotten.
template <class Value>
void set(Chart& chart, Value& kept, Value value) {
  if (kept == value) return;
  kept = value;
  chart.ZoomedFrom.clear();
}

}  // namespace

void copy_view(const Chart& from, Chart& to) {
  restore(to, {view_of(from.Axes(0)), view_of(from.Axes(1))});
  to.ZoomedFrom = from.ZoomedFrom;
}

void use_paper_of(Chart& chart, const Model& model) {
  if (model.y_scale() == 0) return;
  if (code_of(chart, 0) != model.x_scale() || code_of(chart, 1) != model.y_scale()) end_zoom(chart);
  choose_scale(chart, 0, model.x_scale());
  choose_scale(chart, 1, model.y_scale());
}

void choose_scale(Chart& chart, int index, int code) {
  if (code_of(chart, index) != code) end_zoom(chart);
  ChartAxis& axis = chart.Axes(index);
  axis.ScaleType = static_cast<std::int16_t>(code);
  if (has_place(code, axis.Min) && has_place(code, axis.Max)) return;
  const Chart factory = fuStandard_Chart();
  const ChartAxis& usual = factory.Axes(is_probability_scale(code) ? 1 : 0);
  axis.Min = usual.Min;
  axis.Max = usual.Max;
}

bool is_limit(int code, double value) {
  return has_place(code, value) || (is_probability_scale(code) && value == 1.0);
}

void set_limit(Chart& chart, int index, double ChartAxis::*limit, double value) {
  set(chart, chart.Axes(index).*limit, value);
}

void set_automatic(Chart& chart, int index, bool ChartAxis::*automatic, bool on) {
  set(chart, chart.Axes(index).*automatic, on);
}

void follow_data(Chart& chart) {
  end_zoom(chart);
  for (ChartAxis& axis : chart.Axes) axis.AutoMin = axis.AutoMax = true;
}

void take_data_limits(ChartAxis& axis, Limits limits) {
  if (axis.AutoMin) axis.Min = limits.low;
  if (axis.AutoMax) axis.Max = limits.high;
}

void zoom_to(Chart& chart, Limits x, Limits y) {
  chart.ZoomedFrom.push_back({view_of(chart.Axes(0)), view_of(chart.Axes(1))});
  zoom_on_to(chart, x, y);
}

void zoom_on_to(Chart& chart, Limits x, Limits y) {
  hold(chart.Axes(0), x);
  hold(chart.Axes(1), y);
}

std::size_t zoom_depth(const Chart& chart) { return chart.ZoomedFrom.size(); }

bool zoom_back(Chart& chart) {
  if (chart.ZoomedFrom.empty()) return false;
  restore(chart, chart.ZoomedFrom.back());
  chart.ZoomedFrom.pop_back();
  return true;
}

bool end_zoom(Chart& chart) {
  if (chart.ZoomedFrom.empty()) return false;
  restore(chart, chart.ZoomedFrom.front());
  chart.ZoomedFrom.clear();
  return true;
}

}  // namespace tavlo
