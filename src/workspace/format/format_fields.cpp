#include "workspace/format/format_fields.h"

#include <QEvent>
#include <QGuiApplication>
#include <cmath>

#include "chart/parts/symbols.h"
#include "numerics/number_reading.h"
#include "numerics/number_text.h"
#include "workspace/format/colour_dialog.h"
#include "workspace/format/format_pictures.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

constexpr QSize colour_size(36, 14);
constexpr QSize pen_size(90, 14);
constexpr int symbol_side = 20;
constexpr int symbol_columns = 9;

/// A wheel that scrolls a page past a list must not change what is chosen in it.
class WheelGuard : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();
    return true;
  }
};

/// The whole text as a number, "99%" included; nothing for anything else.
std::optional<double> number_of(const QString& text, const NumberPunctuation& punctuation) {
  std::string plain = with_decimal_point(from_qt(text.trimmed()), punctuation);
  const bool percent = plain.ends_with('%');
  if (percent) plain.pop_back();
  const auto number = parse_number(plain);
  if (!number || !percent) return number;
  return *number / 100;
}

std::function<bool(double)> within(const NumberRange& range) {
  return [range](double value) {
    return value >= range.low && value <= range.high &&
           (!range.whole || value == std::floor(value));
  };
}

QPushButton* make_button(const QSize& picture) {
  auto* button = new QPushButton;
  button->setIconSize(picture);
  button->setAutoDefault(false);
  constexpr QSize rim(18, 10);
  button->setFixedSize((picture + rim).expandedTo({0, button->fontMetrics().height() + 8}));
  return button;
}

}  // namespace

QComboBox* make_list(bool editable) {
  auto* box = new QComboBox;
  box->setEditable(editable);
  if (editable) box->setCompleter(nullptr);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(9);
  box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  box->setFocusPolicy(Qt::StrongFocus);
  box->installEventFilter(new WheelGuard(box));
  return box;
}

TextEditor::TextEditor(FormatDraft& draft, Field<std::string> field)
    : FieldEditor(draft), field_(std::move(field)), line_(new QLineEdit) {
  connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) {
    draft_.edit([&](Chart& chart) { field_.set(chart, from_qt(text)); });
  });
}

void TextEditor::show() { line_->setText(to_qt(field_.get(draft_.chart()))); }

NumberEditor::NumberEditor(FormatDraft& draft, Field<double> field,
                           std::function<bool(double)> is_possible)
    : FieldEditor(draft),
      field_(std::move(field)),
      is_possible_(std::move(is_possible)),
      line_(new QLineEdit) {
  line_->setMinimumWidth(line_->fontMetrics().horizontalAdvance(QStringLiteral("000000")));
  connect(line_, &QLineEdit::textEdited, this, &NumberEditor::take);
}

NumberEditor::NumberEditor(FormatDraft& draft, Field<double> field, NumberRange range)
    : NumberEditor(draft, std::move(field), within(range)) {
  line_->setToolTip(
      tr("%1 to %2").arg(to_qt(number_text(range.low)), to_qt(number_text(range.high))));
}

void NumberEditor::show() {
  constexpr int digits = 10;
  line_->setText(to_qt(number_text(field_.get(draft_.chart()), digits)));
  mark(true);
}

void NumberEditor::take(const QString& text) {
  const auto number = number_of(text, draft_.session().settings.punctuation);
  const bool possible = number && is_possible_(*number);
  mark(possible);
  if (possible) draft_.edit([&](Chart& chart) { field_.set(chart, *number); });
}

void NumberEditor::mark(bool valid) {
  valid_ = valid;
  QPalette colours;
  if (!valid) colours.setColor(QPalette::Base, wrong_ground(QGuiApplication::palette()));
  line_->setPalette(colours);
}

CheckEditor::CheckEditor(FormatDraft& draft, Field<bool> field, QAbstractButton* button)
    : FieldEditor(draft), field_(std::move(field)), button_(button) {
  button_->setCheckable(true);
  connect(button_, &QAbstractButton::clicked, this,
          [this](bool on) { draft_.edit([&](Chart& chart) { field_.set(chart, on); }); });
}

ChoiceEditor::ChoiceEditor(FormatDraft& draft, Field<int> field, const std::vector<Choice>& choices)
    : FieldEditor(draft), field_(std::move(field)), box_(make_list(false)) {
  set_choices(choices);
  connect(box_, &QComboBox::activated, this, [this](int index) {
    draft_.edit([&](Chart& chart) { field_.set(chart, box_->itemData(index).toInt()); });
  });
}

void ChoiceEditor::set_choices(const std::vector<Choice>& choices) {
  box_->clear();
  for (const Choice& choice : choices) box_->addItem(choice.picture, choice.text, choice.value);
}

ListedTextEditor::ListedTextEditor(FormatDraft& draft, Field<std::string> field,
                                   const QStringList& usual)
    : FieldEditor(draft), field_(std::move(field)), box_(make_list(true)) {
  box_->addItems(usual);
  connect(box_, &QComboBox::textActivated, this, &ListedTextEditor::take);
  connect(box_->lineEdit(), &QLineEdit::textEdited, this, &ListedTextEditor::take);
}

void ListedTextEditor::take(const QString& text) {
  draft_.edit([&](Chart& chart) { field_.set(chart, from_qt(text)); });
}

void ListedTextEditor::show() { box_->setEditText(to_qt(field_.get(draft_.chart()))); }

ColourEditor::ColourEditor(FormatDraft& draft, Field<std::int32_t> field)
    : FieldEditor(draft), field_(std::move(field)), button_(make_button(colour_size)) {
  connect(button_, &QPushButton::clicked, this, draft_.commands().slot([this] { choose(); }));
}

void ColourEditor::show() {
  const std::int32_t colour = field_.get(draft_.chart());
  button_->setIcon(colour_picture(colour, colour_size));
  button_->setToolTip(tr("Colour %1").arg(to_qt_colour(colour).name()));
}

void ColourEditor::choose() {
  const PenLook now{field_.get(draft_.chart()), pen_style::solid, 1};
  ColourDialog::choose(button_->window(), draft_.commands(), now, ColourDialog::Asks::colour,
                       [this](const PenLook& chosen) {
                         draft_.edit([&](Chart& chart) { field_.set(chart, chosen.colour); });
                         show();
                       });
}

PenEditor::PenEditor(FormatDraft& draft, Field<PenLook> field)
    : FieldEditor(draft), field_(std::move(field)), button_(make_button(pen_size)) {
  button_->setToolTip(tr("Colour, style and width of the line"));
  connect(button_, &QPushButton::clicked, this, draft_.commands().slot([this] { choose(); }));
}

void PenEditor::show() {
  const PenLook pen = field_.get(draft_.chart());
  const bool draws = pen.style != pen_style::none && pen.width != 0;
  button_->setIcon(draws ? pen_picture(pen, pen_size) : QIcon());
  button_->setText(draws ? QString() : tr("none"));
}

void PenEditor::choose() {
  ColourDialog::choose(button_->window(), draft_.commands(), field_.get(draft_.chart()),
                       ColourDialog::Asks::pen, [this](const PenLook& chosen) {
                         draft_.edit([&](Chart& chart) { field_.set(chart, chosen); });
                         show();
                       });
}

SymbolEditor::SymbolEditor(FormatDraft& draft, Field<int> field, const QString& name)
    : FieldEditor(draft),
      field_(std::move(field)),
      pictures_(new PictureChoice(symbol_columns, {symbol_side, symbol_side})) {
  pictures_->setObjectName(name);
  for (int symbol = 1; is_symbol(symbol); ++symbol)
    pictures_->add(symbol, symbol_picture(symbol, symbol_side, 0, 0, false),
                   tr("Symbol %1").arg(symbol));
  connect(pictures_, &PictureChoice::chosen, this,
          [this](int symbol) { draft_.edit([&](Chart& chart) { field_.set(chart, symbol); }); });
}

}  // namespace tavlo
