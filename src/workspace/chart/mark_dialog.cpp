#include "workspace/chart/mark_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <algorithm>

#include "chart/parts/marks.h"

namespace tavlo {

namespace {

constexpr NumberRange font_sizes{1, 500, false};
constexpr NumberRange symbol_sizes{10, 3000, true};

}  // namespace

MarkDialog::MarkDialog(QWidget* parent, Session& session, UserCommands& commands, int chart_index,
                       int mark)
    : QDialog(parent), draft_(session, commands, chart_index), mark_(mark) {
  setObjectName(QStringLiteral("frm_Mark"));
  setWindowTitle(tr("Mark"));
  auto* whole = new QVBoxLayout(this);
  rows_ = new QFormLayout;
  whole->addLayout(rows_);
  const bool is_answer = is_answer_mark(this->mark());
  const MarkKind kind = is_answer ? MarkKind::line : kind_of_mark(this->mark());
  if (is_answer || !this->mark().Text2.empty()) add_text();
  if (is_answer) {
    editors_.front()->widget()->setEnabled(false);
    editors_.front()->widget()->setToolTip(tr("The words follow the fit"));
  }
  if (!is_answer && (kind == MarkKind::line || kind == MarkKind::arrow)) add_heads();
  if (kind == MarkKind::symbol) add_symbol();
  if (kind != MarkKind::text) add_pen();
  for (const auto& editor : editors_) editor->show();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  whole->addWidget(buttons);
}

void MarkDialog::add(const QString& caption, const QString& name,
                     std::unique_ptr<FieldEditor> editor) {
  editor->widget()->setObjectName(name);
  rows_->addRow(caption, editor->widget());
  editors_.push_back(std::move(editor));
}

At<ChartItem> MarkDialog::place() const {
  return [index = mark_](Chart& chart) -> ChartItem& { return chart.Texts(index); };
}

void MarkDialog::add_text() {
  const At<ChartItem> at = place();
  add(tr("&Text"), QStringLiteral("txt_Mark"),
      std::make_unique<TextEditor>(draft_, text_field(at, &ChartItem::Text2)));
  add(tr("&Size (points)"), QStringLiteral("txt_MarkSize"),
      std::make_unique<NumberEditor>(draft_, number_field(at, &ChartItem::FontSize), font_sizes));
  add({}, QStringLiteral("chk_MarkBold"),
      std::make_unique<CheckEditor>(draft_, plain_field<bool>(at, &ChartItem::FontBold),
                                    new QCheckBox(tr("&Bold"))));
  add({}, QStringLiteral("chk_MarkItalic"),
      std::make_unique<CheckEditor>(draft_, plain_field<bool>(at, &ChartItem::FontItalic),
                                    new QCheckBox(tr("&Italic"))));
  add(tr("&Colour"), QStringLiteral("btn_MarkColour"),
      std::make_unique<ColourEditor>(draft_, plain_field<std::int32_t>(at, &ChartItem::TextColor)));
}

void MarkDialog::add_pen() {
  const At<ChartItem> at = place();
  add(tr("&Line"), QStringLiteral("btn_MarkPen"),
      std::make_unique<PenEditor>(draft_, pen_field(at, &ChartItem::LineColor,
                                                    &ChartItem::LineStyle, &ChartItem::LineWidth)));
}

void MarkDialog::add_heads() {
  const At<ChartItem> at = place();
  constexpr int at_end = mark_mode::head_at_end;
  constexpr int at_start = mark_mode::head_at_start;
  add(tr("&Heads"), QStringLiteral("cbo_MarkHeads"),
      std::make_unique<ChoiceEditor>(draft_, plain_field<int>(at, &ChartItem::Mode),
                                     std::vector<Choice>{{0, tr("None")},
                                                         {at_end, tr("At the end")},
                                                         {at_start, tr("At the start")},
                                                         {at_end | at_start, tr("At both ends")}}));
}

void MarkDialog::add_symbol() {
  const At<ChartItem> at = place();
  const QString name = QStringLiteral("pic_MarkSymbol");
  add(tr("S&ymbol"), name,
      std::make_unique<SymbolEditor>(draft_, plain_field<int>(at, &ChartItem::Int3), name));
  add(tr("&Size"), QStringLiteral("txt_MarkSize"),
      std::make_unique<NumberEditor>(draft_, number_field(at, &ChartItem::Int5), symbol_sizes));
  add(tr("&Filling"), QStringLiteral("btn_MarkFill"),
      std::make_unique<ColourEditor>(draft_, plain_field<std::int32_t>(at, &ChartItem::FillColor)));
}

void MarkDialog::accept() {
  const bool valid = std::all_of(editors_.begin(), editors_.end(),
                                 [](const auto& editor) { return editor->is_valid(); });
  draft_.commands().run([&] {
    if (!valid) {
      draft_.session().ports.prompts.show({"Mark",
                                           "Please Check for invalid data.  Then try again.",
                                           BoxIcon::exclamation, BoxButtons::ok});
      return;
    }
    // A mark without words, points or a number would be one that nobody can find.
    // The words of an answer are the fit's.
    const bool is_nothing = kind_of_mark(mark()) == MarkKind::symbol && mark().Int3 == 0;
    if (is_nothing && !is_answer_mark(mark())) delete_mark(draft_.chart(), mark_);
    draft_.keep();
    draft_.session().step = "Edit Mark";
    QDialog::accept();
  });
}

}  // namespace tavlo
