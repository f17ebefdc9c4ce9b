#include "workspace/frame/options_dialog.h"

#include <QEvent>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "actions/change_options.h"
#include "files/language_file.h"
#include "workspace/format/format_fields.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

struct Switch {
  const char* caption;
  bool Settings::*setting;
};

constexpr std::array<Switch, 5> fit_switches = {{
    {"&Benard Approx", &Settings::Benard},
    {"&Sort && Number Data", &Settings::SortRaw},
    {"Show &last fit on plot", &Settings::ShowLast},
    {"- is s&uspension", &Settings::NegativeSuspension},
    {"&Quick Calc", &Settings::QuickCalculation},
}};

struct DigitsBox {
  const char* caption;
  int Settings::*setting;
};

constexpr std::array<DigitsBox, 4> digits_boxes = {{
    {"&Data (Y values)", &Settings::DigitsData},
    {"&Fits", &Settings::DigitsFit},
    {"Lo&g", &Settings::DigitsLog},
    {"&Parameter  Box", &Settings::DigitsParBox},
}};

constexpr std::array<Switch, 4> bar_switches = {{
    {"Project &Index", &Settings::ProjectTree},
    {"&Toolbar (Strip)", &Settings::StripToolbar},
    {"St&atus Bar", &Settings::StatusBar},
    {"Toolba&r (QM format)", &Settings::RibbonToolbar},
}};

constexpr double most_of_screen = 0.94;

constexpr const char* idle_hint = "Hold Mouse over item for information.";

constexpr const char* digits_hint =
    "Tavlo does most calculations in Double Precision(16) digits, but usually only 3 or 4 are "
    "significant.  You can change the digits setting to show more digits for comparisons, or "
    "fewer digits for cleaner looking graphics.";

constexpr const char* fit_hint =
    "These features affect how the data are calculated and shown. \n"
    "Benard:  Use (j-0.3)/(n+0.4) to estimate rank.\n"
    "Sort:  X data will be permanently sorted and original order lost. \n"
    "Show last:  Auto update plot with the last fit.\n"
    "Negative is suspension: Change negative X numbers to suspensions.  You may UNCHECK this if "
    "entering Normal or Linear data.\n"
    "Quick Calc: Changing the model or method will immediately calculate the fit.  Uncheck if "
    "you want the fit to calculate ONLY when the CalculateFit button is pressed.";

constexpr const char* bars_hint =
    "Turning these controls on will allow faster changes.  When off, more room is available for "
    "charts and data.\n"
    "Toolbar: One click options at top of the screen. \n"
    "Status Bar: At bottom of screen, shows status and info.\n"
    "ProjectView: Window on left side of screen to select forms";

QString numbered(const char* name, std::size_t index) {
  return QStringLiteral("%1_%2").arg(to_qt(name)).arg(index);
}

QCheckBox* make_check(const Switch& of, const Settings& settings, const QString& name) {
  auto* box = new QCheckBox(to_qt(of.caption));
  box->setObjectName(name);
  box->setChecked(settings.*of.setting);
  return box;
}

}  // namespace

void OptionsDialog::run(Session& session, UserCommands& commands, std::function<void()> taken,
                        QWidget* parent) {
  auto* dialog = new OptionsDialog(session, commands, std::move(taken), parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

OptionsDialog::OptionsDialog(Session& session, UserCommands& commands, std::function<void()> taken,
                             QWidget* parent)
    : QDialog(parent), session_(session), commands_(commands), taken_(std::move(taken)) {
  setObjectName(QStringLiteral("frm_Options"));
  setWindowTitle(tr("Setup"));
  lay_out();
  for (QWidget* each : findChildren<QWidget*>()) each->installEventFilter(this);
}

// The frames live a little longer than the hints.
OptionsDialog::~OptionsDialog() {
  for (QWidget* each : findChildren<QWidget*>()) each->removeEventFilter(this);
}

QGroupBox* OptionsDialog::add_frame(const QString& title, const QString& hint) {
  auto* frame = new QGroupBox(title);
  hints_[frame] = hint;
  return frame;
}

QGroupBox* OptionsDialog::make_fit_options() {
  QGroupBox* frame = add_frame(tr("Fit Options"), tr(fit_hint));
  auto* column = new QVBoxLayout(frame);
  for (std::size_t i = 0; i < fit_switches.size(); ++i) {
    chk_Fit_[i] = make_check(fit_switches[i], session_.settings, numbered("chk_Fit", i));
    column->addWidget(chk_Fit_[i]);
  }
  column->addStretch();
  return frame;
}

QGroupBox* OptionsDialog::make_digits() {
  QGroupBox* frame = add_frame(tr("Digits for Display"), tr(digits_hint));
  auto* rows = new QFormLayout(frame);
  for (std::size_t i = 0; i < digits_boxes.size(); ++i) {
    const DigitsBox& of = digits_boxes[i];
    txt_Digits_[i] = new QLineEdit(QString::number(session_.settings.*of.setting));
    txt_Digits_[i]->setObjectName(numbered("txt_Digits", i));
    txt_Digits_[i]->setFixedWidth(fontMetrics().averageCharWidth() * 8);
    rows->addRow(to_qt(of.caption), txt_Digits_[i]);
  }
  return frame;
}

QGroupBox* OptionsDialog::make_bars() {
  QGroupBox* frame = add_frame(tr("Control Options"), tr(bars_hint));
  auto* grid = new QGridLayout(frame);
  for (std::size_t i = 0; i < bar_switches.size(); ++i) {
    chk_Opt_[i] = make_check(bar_switches[i], session_.settings, numbered("chk_Opt", i));
    const int place = static_cast<int>(i);
    grid->addWidget(chk_Opt_[i], place / 2, place % 2);
  }
  return frame;
}

QWidget* OptionsDialog::make_language() {
  auto* whole = new QWidget;
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  cbo_Language_ = make_list(false);
  auto* caption = new QLabel(tr("Choose la&nguage for titles and buttons"));
  caption->setBuddy(cbo_Language_);
  cbo_Language_->setObjectName(QStringLiteral("cbo_Language"));
  cbo_Language_->setToolTip(tr("Menus and buttons have it from the next start on."));
  fill_languages();
  row->addWidget(caption);
  row->addWidget(cbo_Language_, 1);
  return whole;
}

/// The present number stays a choice where it has no file, and so does the factory's.
void OptionsDialog::fill_languages() {
  constexpr std::int32_t factory = Settings().Language;
  std::map<std::int32_t, QString> names = {
      {session_.settings.Language, tr("%1: built-in words").arg(session_.settings.Language)},
      {factory, tr("%1: built-in words").arg(factory)}};
  for (const Language& each :
       find_languages(session_.ports.file_system, session_.places.ProgramPath))
    names[each.number] = QStringLiteral("%1: %2").arg(each.number).arg(to_qt(each.file));
  for (const auto& [number, name] : names) cbo_Language_->addItem(name, number);
  cbo_Language_->setCurrentIndex(cbo_Language_->findData(session_.settings.Language));
}

QWidget* OptionsDialog::make_content() {
  auto* content = new QWidget;
  auto* grid = new QGridLayout(content);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(make_fit_options(), 0, 0);
  grid->addWidget(make_digits(), 0, 1);
  grid->addWidget(make_bars(), 1, 0, 1, 2);
  grid->addWidget(make_language(), 2, 0, 1, 2);
  lbl_Options_.setObjectName(QStringLiteral("lbl_Options"));
  lbl_Options_.setWordWrap(true);
  lbl_Options_.setAlignment(Qt::AlignTop | Qt::AlignLeft);
  lbl_Options_.setFrameShape(QFrame::StyledPanel);
  lbl_Options_.setMargin(fontMetrics().height() / 2);
  grid->addWidget(&lbl_Options_, 3, 0, 1, 2);
  return content;
}

QDialogButtonBox* OptionsDialog::make_buttons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmd_OK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmd_Cancel"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

// Where the screen is too small for all, the options scroll and the buttons stay.
void OptionsDialog::lay_out() {
  scroller_.setFrameShape(QFrame::NoFrame);
  scroller_.setFocusPolicy(Qt::NoFocus);
  scroller_.setWidgetResizable(true);
  scroller_.setWidget(make_content());
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(&scroller_, 1);
  QWidget* buttons = make_buttons();
  rows->addWidget(buttons);
  const QSize room = screen()->availableSize() * most_of_screen;
  const QMargins rim = rows->contentsMargins();
  const int width = std::min(fontMetrics().averageCharWidth() * 74, room.width());
  const int inner = width - rim.left() - rim.right();
  keep_room_for_hints(inner - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  const int rest = rim.top() + rim.bottom() + rows->spacing() + buttons->sizeHint().height();
  const int height = scroller_.widget()->layout()->totalHeightForWidth(inner) + rest;
  resize(width, std::min(height, room.height()));
}

/// The longest hint has its room from the start, so that nothing jumps.
void OptionsDialog::keep_room_for_hints(int width) {
  lbl_Options_.setText(tr(fit_hint));
  lbl_Options_.setMinimumHeight(lbl_Options_.heightForWidth(width));
  show_hint(nullptr);
}

/// The hint of the frame that holds the object; the idle one for none.
void OptionsDialog::show_hint(const QObject* at) {
  while (at && !hints_.contains(at)) at = at->parent();
  lbl_Options_.setText(at ? hints_.at(at) : tr(idle_hint));
}

// Who goes through the dialog by keys has no mouse to hold.
bool OptionsDialog::eventFilter(QObject* watched, QEvent* event) {
  const bool is_frame = hints_.contains(watched);
  if (is_frame && event->type() == QEvent::Enter) show_hint(watched);
  if (is_frame && event->type() == QEvent::Leave) show_hint(nullptr);
  if (event->type() == QEvent::FocusIn) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::MouseFocusReason && reason != Qt::ActiveWindowFocusReason) {
      show_hint(watched);
      scroller_.ensureWidgetVisible(static_cast<QWidget*>(watched));
    }
  }
  return QDialog::eventFilter(watched, event);
}

Settings OptionsDialog::chosen() const {
  Settings settings = session_.settings;
  for (std::size_t i = 0; i < fit_switches.size(); ++i)
    settings.*fit_switches[i].setting = chk_Fit_[i]->isChecked();
  for (std::size_t i = 0; i < bar_switches.size(); ++i)
    settings.*bar_switches[i].setting = chk_Opt_[i]->isChecked();
  for (std::size_t i = 0; i < digits_boxes.size(); ++i)
    settings.*digits_boxes[i].setting =
        digits_of(from_qt(txt_Digits_[i]->text()), settings.punctuation);
  settings.Language = cbo_Language_->currentData().toInt();
  return settings;
}

void OptionsDialog::accept() {
  commands_.run([this] {
    change_options(session_, chosen());
    taken_();
    QDialog::accept();
  });
}

}  // namespace tavlo
