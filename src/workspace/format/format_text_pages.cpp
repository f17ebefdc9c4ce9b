#include "workspace/format/format_text_pages.h"

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr NumberRange distances{-32767, 32767};

/// The text of a title; the factory's stand-in for a sub-title counts as none.
Field<std::string> title_text(int index) {
  return {[index](Chart& chart) {
            const std::string& text = chart.Boxes(index).Text2;
            const bool is_none = index == chart_item::sub_title && text == "sub_title";
            return is_none ? std::string() : text;
          },
          [index](Chart& chart, std::string text) { chart.Boxes(index).Text2 = std::move(text); }};
}

}  // namespace

TitlesPage::TitlesPage(FormatDraft& draft) : FormatPage(draft) {
  add_title(tr("&Main title"), QStringLiteral("ttl_Main"), chart_item::main_title);
  add_row(tr("From the top"),
          {number(QStringLiteral("ttl_Main_Top"),
                  number_field(box_item(chart_item::main_title), &ChartItem::Top), distances)});
  add_title(tr("&Sub-title"), QStringLiteral("ttl_Sub"), chart_item::sub_title);
  add_title(tr("&X axis"), QStringLiteral("ttl_X"), chart_item::x_title);
  add_title(tr("&Y axis"), QStringLiteral("ttl_Y"), chart_item::y_title);
  add_row(tr("From the left"),
          {number(QStringLiteral("ttl_Y_Top"),
                  number_field(box_item(chart_item::y_title), &ChartItem::Top), distances)});
  end_rows();
}

void TitlesPage::add_title(const QString& group, const QString& name, int item) {
  const auto at = box_item(item);
  add_group(group);
  add_row(tr("Text"), {text(name, title_text(item))});
  add_font_row(name, at);
  add_background_row(name, at, plain_field<std::int32_t>(at, &ChartItem::FillColor));
}

NotesPage::NotesPage(FormatDraft& draft) : FormatPage(draft) {
  const auto file = box_item(chart_item::file_name);
  add_group(tr("At the foot, left"));
  add_row(
      tr("F&ile name"),
      {choice(
          QStringLiteral("fil_Mode"), plain_field<int>(file, &ChartItem::Mode),
          {{0, tr("(None)")}, {1, tr("Filename")}, {2, tr("Path")}, {3, tr("Path\\Filename")}})});
  add_font_row(QStringLiteral("fil"), file);
  const auto date = box_item(chart_item::date);
  add_group(tr("At the foot, right"));
  add_row(tr("&Date"),
          {listed_text(QStringLiteral("dat_Format"), text_field(date, &ChartItem::Text2),
                       {QStringLiteral("(none)"), QStringLiteral("dd mmm yyyy"),
                        QStringLiteral("yyyy.dd.mm"), QStringLiteral("dddd hh:mm AM/PM"),
                        QStringLiteral("ddd mmm d, yyyy")})});
  add_font_row(QStringLiteral("dat"), date);
  end_rows();
}

}  // namespace tavlo
