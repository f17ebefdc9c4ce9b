#include "workspace/format/format_page.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <algorithm>

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr NumberRange font_sizes{1, 500, false};
constexpr NumberRange places{-32767, 32767};
constexpr NumberRange sizes{1, 32767};

/// The faces that every chart may name, then those of this machine.
QStringList font_faces() {
  QStringList faces = {QStringLiteral("Arial"), QStringLiteral("Times New Roman"),
                       QStringLiteral("Courier New")};
  for (const QString& face : QFontDatabase::families())
    if (!QFontDatabase::isPrivateFamily(face) && !faces.contains(face)) faces << face;
  return faces;
}

QString without_key(QString caption) { return caption.remove(u'&'); }

}  // namespace

At<ChartItem> box_item(int index) {
  return [index](Chart& chart) -> ChartItem& { return chart.Boxes(index); };
}

FormatPage::FormatPage(FormatDraft& draft) : draft_(draft), groups_(new QVBoxLayout(this)) {}

void FormatPage::show_chart() {
  for (FieldEditor* editor : editors_) editor->show();
}

QWidget* FormatPage::invalid_field() {
  for (FieldEditor* editor : editors_)
    if (!editor->is_valid()) return editor->widget();
  return nullptr;
}

void FormatPage::add_group(const QString& title) {
  auto* group = new QGroupBox(title);
  rows_ = new QFormLayout(group);
  rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  groups_->addWidget(group);
}

void FormatPage::add_row(const QString& caption, const std::vector<QWidget*>& widgets) {
  auto* line = new QHBoxLayout;
  for (QWidget* widget : widgets) {
    if (widget->accessibleName().isEmpty()) widget->setAccessibleName(without_key(caption));
    line->addWidget(widget);
  }
  const bool fills = std::any_of(widgets.begin(), widgets.end(), [](const QWidget* widget) {
    return widget->sizePolicy().expandingDirections().testFlag(Qt::Horizontal);
  });
  if (!fills) line->addStretch(1);
  auto* label = new QLabel(caption);
  label->setBuddy(widgets.front());
  rows_->addRow(label, line);
}

QWidget* FormatPage::text(const QString& name, Field<std::string> field) {
  return keep(name, new TextEditor(draft_, std::move(field))).widget();
}

QWidget* FormatPage::number(const QString& name, Field<double> field, NumberRange range) {
  return keep(name, new NumberEditor(draft_, std::move(field), range)).widget();
}

QWidget* FormatPage::check(const QString& name, const QString& caption, Field<bool> field) {
  auto* box = new QCheckBox(caption);
  box->setAccessibleName(without_key(caption));
  return keep(name, new CheckEditor(draft_, std::move(field), box)).widget();
}

QWidget* FormatPage::choice(const QString& name, Field<int> field,
                            const std::vector<Choice>& choices) {
  return keep(name, new ChoiceEditor(draft_, std::move(field), choices)).widget();
}

QWidget* FormatPage::listed_text(const QString& name, Field<std::string> field,
                                 const QStringList& usual) {
  return keep(name, new ListedTextEditor(draft_, std::move(field), usual)).widget();
}

QWidget* FormatPage::colour(const QString& name, Field<std::int32_t> field) {
  return keep(name, new ColourEditor(draft_, std::move(field))).widget();
}

QWidget* FormatPage::pen(const QString& name, Field<PenLook> field) {
  return keep(name, new PenEditor(draft_, std::move(field))).widget();
}

QWidget* FormatPage::font_style(const QString& name, const QString& words, bool ChartItem::*style,
                                At<ChartItem> item) {
  auto* button = new QToolButton;
  button->setText(words.left(1));
  button->setToolTip(words);
  button->setAccessibleName(words);
  QFont font = button->font();
  font.setBold(style == &ChartItem::FontBold);
  font.setItalic(style == &ChartItem::FontItalic);
  font.setUnderline(style == &ChartItem::FontUnderline);
  button->setFont(font);
  return keep(name, new CheckEditor(draft_, plain_field<bool>(std::move(item), style), button))
      .widget();
}

void FormatPage::add_font_row(const QString& name, At<ChartItem> item) {
  add_font_row(name, item, plain_field<std::int32_t>(item, &ChartItem::TextColor));
}

void FormatPage::add_font_row(const QString& name, At<ChartItem> item,
                              Field<std::int32_t> text_colour) {
  QWidget* face = listed_text(name + QStringLiteral("_Font"),
                              text_field(item, &ChartItem::FontName), font_faces());
  QWidget* size =
      number(name + QStringLiteral("_Size"), number_field(item, &ChartItem::FontSize), font_sizes);
  size->setAccessibleName(tr("Size in points"));
  size->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  size->setFixedWidth(size->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
  QWidget* letters = colour(name + QStringLiteral("_Colour"), std::move(text_colour));
  letters->setAccessibleName(tr("Colour of the text"));
  add_row(tr("Font"),
          {face, size,
           font_style(name + QStringLiteral("_Bold"), tr("Bold"), &ChartItem::FontBold, item),
           font_style(name + QStringLiteral("_Italic"), tr("Italic"), &ChartItem::FontItalic, item),
           font_style(name + QStringLiteral("_Underline"), tr("Underlined"),
                      &ChartItem::FontUnderline, item),
           letters});
}

void FormatPage::add_background_row(const QString& name, At<ChartItem> item,
                                    Field<std::int32_t> fill_colour) {
  auto* frame = new QLabel(tr("Frame"));
  add_row(
      tr("Background"),
      {check(name + QStringLiteral("_Fill"), tr("Filled"),
             plain_field<bool>(item, &ChartItem::Fill)),
       colour(name + QStringLiteral("_FillColour"), std::move(fill_colour)), frame,
       pen(name + QStringLiteral("_Frame"),
           pen_field(item, &ChartItem::LineColor, &ChartItem::LineStyle, &ChartItem::LineWidth))});
}

void FormatPage::add_place_row(const QString& caption, const QString& name, At<ChartItem> item) {
  add_row(caption,
          {number(name + QStringLiteral("_Left"), number_field(item, &ChartItem::Left), places),
           number(name + QStringLiteral("_Top"), number_field(item, &ChartItem::Top), places)});
}

void FormatPage::add_size_row(const QString& caption, const QString& name, At<ChartItem> item) {
  add_row(
      caption,
      {number(name + QStringLiteral("_Width"), number_field(item, &ChartItem::Width), sizes),
       number(name + QStringLiteral("_Height"), number_field(item, &ChartItem::Height), sizes)});
}

}  // namespace tavlo
