#include "workspace/format/format_data_page.h"

#include <algorithm>

#include "chart/parts/plot_sets.h"
#include "life/models.h"
#include "workspace/format/format_pictures.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr NumberRange symbol_sizes{1, 5000};
constexpr int picture_side = 16;

std::vector<Choice> data_choices(const Session& session) {
  std::vector<Choice> choices = {{0, FormatPage::tr("(none)")}};
  for (int i = 1; i <= session.project.data.bound(); ++i)
    choices.push_back({session.project.data(i).UniqueId, to_qt(session.project.data(i).Title)});
  return choices;
}

QString fit_text(const FitResult& fit, int number) {
  const ModelNames names = fs_ModelNames(fit.ModelCode, fit.Method);
  return QStringLiteral("%1  %2").arg(number).arg(to_qt(names.long_name));
}

/// The fits of the row's set; its own number stands among them even when there is no
/// such fit yet.
std::vector<Choice> fit_choices(const Session& session, const ChartMarker& marker) {
  const int index = fit_set_of(session.project, marker);
  std::vector<Choice> choices = {{0, FormatPage::tr("working fit")}};
  const int last = index == 0 ? 0 : session.project.fits(index).nFits;
  for (int i = 1; i <= last; ++i)
    choices.push_back({i, fit_text(session.project.fits(index).Fits(i), i)});
  if (marker.FitNumber > last)
    choices.push_back({marker.FitNumber, FormatPage::tr("%1  (none yet)").arg(marker.FitNumber)});
  return choices;
}

QIcon picture_of(const ChartMarker& marker) {
  return symbol_picture(marker.Symbol, picture_side, marker.SymbolColor, marker.FillColor,
                        marker.SymbolFill != 0);
}

}  // namespace

DataPage::DataPage(FormatDraft& draft) : FormatPage(draft) {
  const auto sets = plot_sets(draft.session(), draft.chart());
  if (!sets.empty()) row_ = sets.front().row;
  add_set_list();
  add_contents();
  add_symbol();
  add_line();
  end_rows();
}

At<ChartMarker> DataPage::marker() {
  return [this](Chart& chart) -> ChartMarker& { return chart.Markers(row_); };
}

void DataPage::add_set_list() {
  sets_ = make_list(false);
  sets_->setObjectName(QStringLiteral("cbo_Set"));
  connect(sets_, &QComboBox::activated, this, [this](int index) {
    draft().commands().run([&] {
      row_ = index + 1;
      show_chart();
    });
  });
  add_group(tr("Plot set"));
  add_row(tr("&Plot set"), {sets_});
}

void DataPage::add_contents() {
  QWidget* list = choice(QStringLiteral("set_Data"),
                         {[at = marker()](Chart& chart) { return at(chart).DataId; },
                          [at = marker()](Chart& chart, int id) { show_data(at(chart), id); }},
                         data_choices(draft().session()));
  connect(static_cast<QComboBox*>(list), &QComboBox::activated, this, [this] { show_chart(); });
  add_row(tr("&Data"), {list});
  fits_ = &keep(QStringLiteral("set_Fit"),
                new ChoiceEditor(draft(),
                                 {[at = marker()](Chart& chart) { return at(chart).FitNumber; },
                                  [at = marker()](Chart& chart, int number) {
                                    at(chart).FitNumber = number;
                                    at(chart).Tied = true;
                                  }},
                                 {}));
  add_row(tr("&Fit"), {fits_->widget()});
  add_row(tr("La&bel"),
          {text(QStringLiteral("set_Label"), text_field(marker(), &ChartMarker::Label))});
}

void DataPage::add_symbol() {
  const QString name = QStringLiteral("opt_Symbol");
  add_group(tr("Symbol"));
  add_row(
      tr("&Symbol"),
      {keep(name, new SymbolEditor(draft(), plain_field<int>(marker(), &ChartMarker::Symbol), name))
           .widget()});
  add_row(tr("Si&ze"), {number(QStringLiteral("set_Size"),
                               number_field(marker(), &ChartMarker::Size), symbol_sizes)});
  add_row(tr("F&illing"), {check(QStringLiteral("set_Fill"), tr("Filled"),
                                 plain_field<bool>(marker(), &ChartMarker::SymbolFill)),
                           colour(QStringLiteral("set_FillColour"),
                                  plain_field<std::int32_t>(marker(), &ChartMarker::FillColor))});
  add_row(tr("&Outline"), {pen(QStringLiteral("set_SymbolPen"),
                               pen_field(marker(), &ChartMarker::SymbolColor,
                                         &ChartMarker::SymbolStyle, &ChartMarker::SymbolWidth))});
}

void DataPage::add_line() {
  add_group(tr("Line of the fit"));
  add_row(tr("&Line"), {pen(QStringLiteral("set_LinePen"),
                            pen_field(marker(), &ChartMarker::LineColor, &ChartMarker::LineStyle,
                                      &ChartMarker::LineWidth))});
}

void DataPage::show_chart() {
  row_ = std::clamp(row_, 1, draft().chart().nMarkers);
  fits_->set_choices(fit_choices(draft().session(), draft().chart().Markers(row_)));
  FormatPage::show_chart();
  show_sets();
}

// The list shows each set as it stands now.
void DataPage::show_sets() {
  const Chart& chart = draft().chart();
  while (sets_->count() > chart.nMarkers) sets_->removeItem(sets_->count() - 1);
  while (sets_->count() < chart.nMarkers) sets_->addItem(QString());
  for (int row = 1; row <= chart.nMarkers; ++row) {
    const ChartMarker& marker = chart.Markers(row);
    const bool shown = find_data(draft().session().project, marker.DataId) != 0;
    const QString text = QStringLiteral("%1  %2").arg(row).arg(to_qt(marker.Label));
    sets_->setItemText(row - 1, shown ? text : tr("%1  (not shown)").arg(text));
    sets_->setItemIcon(row - 1, picture_of(marker));
  }
  sets_->setCurrentIndex(row_ - 1);
}

}  // namespace tavlo
