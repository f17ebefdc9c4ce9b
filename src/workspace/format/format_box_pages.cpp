#include "workspace/format/format_box_pages.h"

#include "chart/parts/legend.h"
#include "chart/parts/movable_boxes.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr const char* legend_name = "leg";
constexpr const char* parameters_name = "par";

/// A colour as it is drawn: the factory's legend and parameter box hold colours that
/// nobody could read. A colour that is chosen makes the other ones those shown.
Field<std::int32_t> shown_colour(At<ChartItem> at, std::int32_t ChartItem::*colour) {
  return {[=](Chart& chart) { return with_readable_colours(at(chart)).*colour; },
          [=](Chart& chart, std::int32_t value) {
            ChartItem& item = at(chart);
            item = with_readable_colours(item);
            item.*colour = value;
          }};
}

/// Whether the box finds its own place. One that is told not to stays where it stands.
Field<bool> finds_place(FormatDraft& draft, int item) {
  return {[item](Chart& chart) { return !has_own_place(chart, item); },
          [item, &draft](Chart& chart, bool finds) {
            finds ? free_box(chart, item) : move_box(chart, draft.drawing(), item, 0, 0);
          }};
}

}  // namespace

BoxesPage::BoxesPage(FormatDraft& draft) : FormatPage(draft) {
  const auto box = box_item(chart_item::chart_box);
  add_group(tr("Chart"));
  add_size_row(tr("&Width, height"), QStringLiteral("cht"), box);
  add_background_row(QStringLiteral("cht"), box,
                     plain_field<std::int32_t>(box, &ChartItem::FillColor));
  const auto plot = box_item(chart_item::plot_box);
  add_group(tr("Plot"));
  add_place_row(tr("&Left, top"), QStringLiteral("plt"), plot);
  add_size_row(tr("Wid&th, height"), QStringLiteral("plt"), plot);
  add_background_row(QStringLiteral("plt"), plot,
                     plain_field<std::int32_t>(plot, &ChartItem::FillColor));
  end_rows();
}

InsetsPage::InsetsPage(FormatDraft& draft) : FormatPage(draft) {
  add_group(tr("&Parameter box"));
  add_inset(to_qt(parameters_name), chart_item::parameter_box);
  add_group(tr("&Legend"));
  add_row(tr("&Shown"), {choice(QStringLiteral("leg_Mode"),
                                plain_field<int>(box_item(chart_item::legend), &ChartItem::Mode),
                                {{legend_mode::never, tr("never")},
                                 {legend_mode::automatic, tr("with two or more plot sets")},
                                 {legend_mode::always, tr("always")}})});
  add_inset(to_qt(legend_name), chart_item::legend);
  end_rows();
}

void InsetsPage::add_inset(const QString& name, int item) {
  const auto at = box_item(item);
  add_font_row(name, at, shown_colour(at, &ChartItem::TextColor));
  add_background_row(name, at, shown_colour(at, &ChartItem::FillColor));
  QWidget* own =
      check(name + QStringLiteral("_Free"), tr("Finds a free place"), finds_place(draft(), item));
  connect(static_cast<QAbstractButton*>(own), &QAbstractButton::clicked, this,
          [this] { show_chart(); });
  add_row(tr("Place"), {own});
  add_place_row(tr("Left, top"), name, at);
}

void InsetsPage::show_chart() {
  FormatPage::show_chart();
  enable_places();
}

void InsetsPage::enable_places() {
  for (const auto& [name, item] : {std::pair{legend_name, chart_item::legend},
                                   std::pair{parameters_name, chart_item::parameter_box}})
    for (const char* part : {"_Left", "_Top"})
      findChild<QWidget*>(to_qt(name) + to_qt(part))
          ->setEnabled(has_own_place(draft().chart(), item));
}

}  // namespace tavlo
