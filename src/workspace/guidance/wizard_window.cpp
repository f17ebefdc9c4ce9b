#include "workspace/guidance/wizard_window.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

enum FlowButton : std::size_t { back, forward, check };

QLabel* note_of(const WizardExample& example) {
  auto* note = new QLabel(to_qt(example.note));
  note->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return note;
}

void set_lines(QLabel& label, const char* text) {
  label.setText(to_qt(text));
  label.setVisible(*text != 0);
}

}  // namespace

WizardWindow::WizardWindow(const Session& session, SetModel set_model, QWidget* parent)
    : QDialog(parent), session_(session), set_model_(std::move(set_model)), PicSmall_(session) {
  setObjectName(QStringLiteral("frm_ModFit"));
  setWindowTitle(tr("Choose a Model"));
  SST_Models_.setObjectName(QStringLiteral("SST_Models"));
  SST_Models_.setAccessibleName(tr("Flow chart and examples"));
  SST_Models_.setTabPosition(QTabWidget::South);
  SST_Models_.addTab(make_flow_tab(), tr("Flow"));
  for (std::size_t i = 0; i < wizard_examples().size(); ++i)
    SST_Models_.addTab(make_example_tab(i), to_qt(wizard_examples()[i].tab));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(&SST_Models_);
  layout->addWidget(make_buttons());
  resize(fontMetrics().averageCharWidth() * 115, fontMetrics().height() * 29);
}

QWidget* WizardWindow::make_flow_tab() {
  auto* tab = new QWidget;
  auto* columns = new QHBoxLayout(tab);
  columns->addWidget(make_question(), 3);
  PicSmall_.setObjectName(QStringLiteral("PicSmall"));
  columns->addWidget(&PicSmall_, 2);
  return tab;
}

QWidget* WizardWindow::make_question() {
  auto* side = new QWidget;
  auto* rows = new QVBoxLayout(side);
  rows->setContentsMargins(0, 0, 0, 0);
  fraQuestion_.setObjectName(QStringLiteral("fraQuestion"));
  fraQuestion_.installEventFilter(this);
  auto* answers = new QVBoxLayout(&fraQuestion_);
  for (std::size_t i = 0; i < opt_Mod_.size(); ++i) {
    opt_Mod_[i].setObjectName(QStringLiteral("opt_Mod%1").arg(i));
    opt_Mod_[i].setAutoExclusive(false);  // an arrow key goes on to the next, it answers nothing
    answers->addWidget(&opt_Mod_[i]);
    connect(&opt_Mod_[i], &QRadioButton::clicked, this,
            [this, i] { walk([&] { wizard_.answer(static_cast<int>(i) + 1); }); });
  }
  answers->addStretch(1);
  rows->addWidget(&fraQuestion_, 1);
  for (QLabel* label : {&lbl_model_, &lbl_Lacks_}) {
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    rows->addWidget(label);
  }
  lbl_model_.setObjectName(QStringLiteral("lbl_model"));
  lbl_Lacks_.setObjectName(QStringLiteral("lbl_Lacks"));
  return side;
}

QWidget* WizardWindow::make_buttons() {
  auto* row = new QWidget;
  auto* buttons = new QHBoxLayout(row);
  buttons->setContentsMargins(0, 0, 0, 0);
  const std::array<QString, 3> captions = {tr("&Back"), tr("&Forward"), tr("&Done, go on")};
  const std::array<QString, 3> icons = {QStringLiteral("back"), QStringLiteral("forward"),
                                        QString()};
  for (std::size_t i = 0; i < cmd_Flow_.size(); ++i) {
    cmd_Flow_[i].setObjectName(QStringLiteral("cmd_Flow%1").arg(i));
    cmd_Flow_[i].setText(captions[i]);
    if (!icons[i].isEmpty()) cmd_Flow_[i].setIcon(icon(icons[i]));
    cmd_Flow_[i].setAutoDefault(false);
    buttons->addWidget(&cmd_Flow_[i]);
  }
  connect(&cmd_Flow_[back], &QPushButton::clicked, this, [this] { walk([&] { wizard_.back(); }); });
  connect(&cmd_Flow_[forward], &QPushButton::clicked, this,
          [this] { walk([&] { wizard_.forward(); }); });
  connect(&cmd_Flow_[check], &QPushButton::clicked, this,
          [this] { walk([&] { wizard_.check(); }); });
  buttons->addStretch(1);
  cmd_Set_.setObjectName(QStringLiteral("cmd_Set"));
  cmd_Set_.setText(tr("&Set this model"));
  cmd_Set_.setToolTip(tr("Sets the options of the fit panel; nothing is calculated"));
  cmd_Set_.setAutoDefault(false);
  connect(&cmd_Set_, &QPushButton::clicked, this, [this] {
    if (const auto& advice = wizard_.step().advice) set_model_(*advice);
  });
  buttons->addWidget(&cmd_Set_);
  auto* close = new QPushButton(tr("Close"));
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  buttons->addWidget(close);
  return row;
}

QWidget* WizardWindow::make_example_tab(std::size_t place) {
  auto* tab = new QWidget;
  auto* columns = new QHBoxLayout(tab);
  auto* picture = new ExamplePicture(session_);
  picture->show_example(place);
  columns->addWidget(picture, 1);
  columns->addWidget(note_of(wizard_examples()[place]));
  return tab;
}

void WizardWindow::open_wizard() {
  if (!isVisible()) {
    wizard_ = {};
    has_begun_ = false;
    SST_Models_.setCurrentIndex(0);
    show_step();
  }
  show();
  raise();
  activateWindow();
}

template <class Act>
void WizardWindow::walk(Act act) {
  const bool had_focus = focusWidget() && fraQuestion_.isAncestorOf(focusWidget());
  act();
  has_begun_ = has_begun_ || wizard_.depth() > 0;
  show_step();
  if (had_focus && opt_Mod_.front().isVisible()) opt_Mod_.front().setFocus();
}

void WizardWindow::show_step() {
  const WizardStep& step = wizard_.step();
  fraQuestion_.setTitle(to_qt(step.frame));
  show_answers(step);
  const bool is_question = step.kind == StepKind::question;
  set_lines(lbl_model_, !has_begun_ ? wizard_opening() : is_question ? "" : step.text);
  cmd_Flow_[check].setVisible(step.kind == StepKind::action);
  PicSmall_.show_example(example_of_step(step.number));
  show_advice(step);
}

void WizardWindow::show_answers(const WizardStep& step) {
  for (std::size_t i = 0; i < opt_Mod_.size(); ++i) {
    const bool is_there = step.kind == StepKind::question && i < step.answers.size();
    opt_Mod_[i].setChecked(false);
    opt_Mod_[i].setText(is_there ? to_qt(step.answers[i].text) : QString());
    opt_Mod_[i].setVisible(is_there);
  }
}

void WizardWindow::show_advice(const WizardStep& step) {
  cmd_Set_.setVisible(step.advice.has_value());
  lbl_Lacks_.setText(tr("This program does not have %1.").arg(to_qt(step.lacks)));
  lbl_Lacks_.setVisible(*step.lacks != 0);
}

/// The wheel walks through the history while it is over the question.
bool WizardWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QDialog::eventFilter(watched, event);
  const int notches = static_cast<QWheelEvent*>(event)->angleDelta().y() / 120;
  walk([&] { wizard_.turn_wheel(notches); });
  return true;
}

}  // namespace tavlo
