#include "workspace/chart/value_box.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include "chart/compose/answer_marks.h"
#include "chart/parts/plot_sets.h"
#include "workspace/chart/chart_overlay.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int answer_digits = 7;
constexpr int box_gap = 3;  // pixels, to the edge of the window

}  // namespace

ValueBox::ValueBox(ChartStage& stage, UserCommands& commands, QWidget* parent)
    : QFrame(parent), stage_(stage), commands_(commands) {
  setObjectName(QStringLiteral("box_Value"));
  setFrameShape(QFrame::Box);
  setBackgroundRole(QPalette::Window);
  setAutoFillBackground(true);
  entry_.setObjectName(QStringLiteral("txt_Value"));
  entry_.setAccessibleName(tr("Percentage or time"));
  entry_.setPlaceholderText(tr("10% or 500"));
  entry_.setMaximumWidth(entry_.fontMetrics().averageCharWidth() * 16);
  entry_.setToolTip(
      tr("A percentage such as 10% gives the time by which so many have failed; a time such as "
         "500 gives how many have failed by then"));
  answer_.setObjectName(QStringLiteral("lbl_Answer"));
  answer_.setTextFormat(Qt::PlainText);
  answer_.setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* row = new QHBoxLayout(this);
  row->addWidget(&entry_, 0, Qt::AlignTop);
  copy_ = add_button(tr("&Copy"), QStringLiteral("cmd_CopyAnswer"),
                     tr("Copies the answers (Enter, once they are there)"), &ValueBox::copy);
  mark_ = add_button(tr("&Mark"), QStringLiteral("cmd_MarkAnswer"),
                     tr("Draws the answers on the chart to stay"), &ValueBox::mark);
  for (QPushButton* button : {copy_, mark_}) row->addWidget(button, 0, Qt::AlignTop);
  row->addWidget(&answer_);  // behind the buttons: in a narrow window they stay in reach
  row->setSizeConstraint(QLayout::SetFixedSize);
  row->setContentsMargins(4, 4, 4, 4);
  connect(&entry_, &QLineEdit::returnPressed, this, [this] { commands_.run([this] { enter(); }); });
  connect(&entry_, &QLineEdit::textEdited, this, &ValueBox::forget);
  move(box_gap, box_gap);  // above the plot, which its one line leaves free
  hide();
}

QPushButton* ValueBox::add_button(const QString& caption, const QString& name, const QString& tip,
                                  void (ValueBox::*act)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setAutoDefault(true);
  connect(button, &QPushButton::clicked, this, [this, act] {
    if (!commands_.running()) commands_.run([this, act] { (this->*act)(); });
  });
  return button;
}

void ValueBox::open(const QString& text) {
  entry_.setText(text);
  forget();
  adjustSize();
  show();
  raise();
  entry_.setFocus();
}

void ValueBox::enter() { sayings_.empty() ? ask() : copy(); }

void ValueBox::ask() {
  const ReadQuestion question =
      read_question(from_qt(entry_.text()), stage_.session().settings.punctuation);
  asked_ = question.asked;
  if (!asked_) return show_answers(to_qt(question.refusal));
  follow();
}

void ValueBox::follow() {
  if (!asked_) return;
  sayings_ = sayings(stage_.session(), stage_.chart(), stage_.readout(), *asked_);
  if (sayings_.empty())  // for now: the question stands
    return show_answers(to_qt(why_nothing_said(stage_.session(), stage_.chart())));
  show_answers(to_qt(sayings_text(*asked_, sayings_, answer_digits)));
}

void ValueBox::show_answers(const QString& words) {
  answer_.setText(words);
  answer_.setVisible(!words.isEmpty());
  copy_->setEnabled(!sayings_.empty());
  mark_->setEnabled(std::any_of(sayings_.begin(), sayings_.end(),
                                [](const FitSaying& saying) { return saying.place.has_value(); }));
  emit said(QString(words).replace(u'\n', QStringLiteral("   ")));
  emit changed();
}

/// Another text is being typed: the answers were not to it.
void ValueBox::forget() {
  asked_.reset();
  sayings_.clear();
  show_answers({});
}

void ValueBox::copy() {
  if (sayings_.empty()) return;
  stage_.session().ports.clipboard.set_text(
      {sayings_text(*asked_, sayings_, answer_digits), {}, {}});
  emit said(tr("The answers are copied."));
}

void ValueBox::mark() {
  if (sayings_.empty()) return;
  const auto marks = stage_.chart().nTexts;
  for (const FitSaying& saying : sayings_)
    if (saying.place) add_answer_mark(stage_.chart(), *asked_, saying);
  if (stage_.chart().nTexts == marks) return emit said(tr("It is marked already."));
  stage_.name_step("Mark");
  leave();
}

void ValueBox::leave() {
  forget();
  hide();
  emit closed();
}

// The chart behind it must not hear what is meant for the box.
void ValueBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) leave();
  event->accept();
}

void ValueBox::paint_answers(QPainter& painter) const {
  for (const FitSaying& saying : sayings_)
    if (saying.place) paint_drop_line(painter, stage_.plot_area(), stage_.pixel(*saying.place));
}

}  // namespace tavlo
