#include "workspace/format/format_axis_page.h"

#include "chart/scales/chart_view.h"
#include "life/models.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

const std::vector<Choice>& scales_of(int axis) {
  static const std::vector<Choice> x = {{x_scale::linear, FormatPage::tr("linear")},
                                        {x_scale::log, FormatPage::tr("logarithmic")}};
  static const std::vector<Choice> y = {{y_scale::linear, FormatPage::tr("linear")},
                                        {y_scale::log, FormatPage::tr("logarithmic")},
                                        {y_scale::normal, FormatPage::tr("Normal probability")},
                                        {y_scale::weibull, FormatPage::tr("Weibull probability")},
                                        {y_scale::gumbel, FormatPage::tr("Gumbel probability")}};
  return axis == 0 ? x : y;
}

int code_of(int index, const ChartAxis& axis) {
  return index == 0 ? x_scale_of(axis) : y_scale_of(axis);
}

}  // namespace

AxisPage::AxisPage(FormatDraft& draft, int axis)
    : FormatPage(draft),
      index_(axis),
      at_([axis](Chart& chart) -> ChartAxis& { return chart.Axes(axis); }) {
  add_limits();
  add_labels();
  add_grid();
  end_rows();
}

QString AxisPage::named(const char* part) const {
  return (index_ == 0 ? QStringLiteral("axx_") : QStringLiteral("axy_")) + to_qt(part);
}

void AxisPage::add_limits() {
  add_group(tr("Scale"));
  QWidget* scale = choice(named("Scale"),
                          {[this](Chart& chart) { return code_of(index_, at_(chart)); },
                           [this](Chart& chart, int code) { choose_scale(chart, index_, code); }},
                          scales_of(index_));
  connect(static_cast<QComboBox*>(scale), &QComboBox::activated, this, [this] { show_chart(); });
  add_row(tr("&Scale"), {scale});
  add_limit(tr("M&inimum"), named("Min"), &ChartAxis::Min, &ChartAxis::AutoMin);
  add_limit(tr("M&aximum"), named("Max"), &ChartAxis::Max, &ChartAxis::AutoMax);
  const At<ChartItem> label = [at = at_](Chart& chart) -> ChartItem& { return at(chart).Label; };
  add_row(
      tr("&Limits"),
      {choice(named("Limits"), plain_field<int>(label, &ChartItem::Int4),
              {{limit_rule::fit_to_data, tr("fit to data")}, {limit_rule::stated, tr("stated")}})});
}

Field<double> AxisPage::limit_field(double ChartAxis::*limit) const {
  return {number_field(at_, limit).get, [index = index_, limit](Chart& chart, double value) {
            set_limit(chart, index, limit, value);
          }};
}

Field<bool> AxisPage::automatic_field(bool ChartAxis::*automatic) const {
  return {plain_field<bool>(at_, automatic).get,
          [index = index_, automatic](Chart& chart, bool on) {
            set_automatic(chart, index, automatic, on);
          }};
}

void AxisPage::add_limit(const QString& caption, const QString& name, double ChartAxis::*limit,
                         bool ChartAxis::*automatic) {
  const auto is_possible = [this](double value) {
    return is_limit(code_of(index_, axis()), value);
  };
  limits_.push_back(&keep(name, new NumberEditor(draft(), limit_field(limit), is_possible)));
  QWidget* flag =
      check(name + QStringLiteral("_Auto"), tr("Automatic"), automatic_field(automatic));
  connect(static_cast<QAbstractButton*>(flag), &QAbstractButton::clicked, this,
          [this] { enable_limits(); });
  add_row(caption, {limits_.back()->widget(), flag});
}

void AxisPage::add_labels() {
  const At<ChartItem> label = [at = at_](Chart& chart) -> ChartItem& { return at(chart).Label; };
  add_group(tr("Labels"));
  QWidget* format =
      listed_text(named("Format"), text_field(label, &ChartItem::Text2),
                  {QString(), QStringLiteral("0"), QStringLiteral("0.0"), QStringLiteral("0.00"),
                   QStringLiteral("0%"), QStringLiteral("0.0%"), QStringLiteral("#,##0"),
                   QStringLiteral("0.00E+00")});
  static_cast<QComboBox*>(format)->lineEdit()->setPlaceholderText(tr("as the values need"));
  add_row(tr("&Number format"), {format});
  add_font_row(named("Label"), label);
}

void AxisPage::add_grid() {
  add_group(tr("Grid"));
  add_row(tr("Ma&jor lines"),
          {pen(named("Major"), pen_field(at_, &ChartAxis::MajorColor, &ChartAxis::MajorStyle,
                                         &ChartAxis::MajorWidth))});
  add_row(tr("Min&or ticks"),
          {pen(named("Minor"), pen_field(at_, &ChartAxis::MinorColor, &ChartAxis::MinorStyle,
                                         &ChartAxis::MinorWidth))});
}

void AxisPage::show_chart() {
  FormatPage::show_chart();
  enable_limits();
}

void AxisPage::enable_limits() {
  limits_[0]->widget()->setEnabled(!axis().AutoMin);
  limits_[1]->widget()->setEnabled(!axis().AutoMax);
}

// An automatic limit may just have got another value.
void AxisPage::composed() {
  for (NumberEditor* limit : limits_)
    if (!limit->widget()->isEnabled()) limit->show();
}

QWidget* AxisPage::invalid_field() {
  if (QWidget* field = FormatPage::invalid_field()) return field;
  if (axis().Min < axis().Max) return nullptr;
  return limits_[axis().AutoMax ? 0 : 1]->widget();
}

}  // namespace tavlo
