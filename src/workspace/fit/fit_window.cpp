#include "workspace/fit/fit_window.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "actions/intake.h"
#include "actions/reports.h"
#include "actions/shown_fits.h"
#include "workspace/fit/fit_choices.h"
#include "workspace/format/colour_dialog.h"
#include "workspace/format/format_pictures.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int gap = 4;

QString option_name(const char* group, int index) {
  return QStringLiteral("%1_%2").arg(to_qt(group)).arg(index);
}

/// The axes and each population of a formula on a line of its own, so that the
/// longest one stays as narrow as the button above it.
QString in_lines(QString formula) {
  return formula.replace(QStringLiteral(" ="), QStringLiteral("\n="))
      .replace(u'+', QStringLiteral("\n+"));
}

/// Tab stops at the option that is chosen; the arrow keys go to the others.
void stop_at_checked(const QButtonGroup& group) {
  for (QAbstractButton* button : group.buttons())
    button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

QSplitter* make_splitter(QWidget& first) {
  auto* splitter = new QSplitter(Qt::Horizontal);
  splitter->addWidget(&first);
  splitter->setChildrenCollapsible(false);
  splitter->setStretchFactor(0, 1);
  return splitter;
}

}  // namespace

FitWindow::FitWindow(Session& session, UserCommands& commands, int fit_index, QWidget* parent)
    : QWidget(parent),
      session_(session),
      commands_(commands),
      index_(fit_index),
      model_(session.gFitForm(fit_index)->grd_Fit, false, nullptr),
      grd_Fit_(this),
      life_(session, commands, fit_index) {
  set_up_grid();
  lay_out();
  show_choices();
  refresh_grid();
}

// The panel scrolls when the window is too small for it, so that every control
// stays within reach.
void FitWindow::lay_out() {
  auto* content = new QWidget;
  auto* top = new QHBoxLayout;
  choices_ = top;
  top->setSpacing(gap);
  top->addWidget(make_model_frame());
  top->addWidget(make_method_frame());
  top->addWidget(make_action_column());
  top->addStretch(1);
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(gap, gap, gap, gap);
  rows->setSpacing(gap);
  rows->addLayout(top);
  below_choices_ = make_splitter(grd_Fit_);
  below_choices_->addWidget(&life_);
  rows->addWidget(below_choices_, 1);
  connect(&life_, &LifePanel::hint_wanted, this, &FitWindow::hint_wanted);

  auto* scroller = new QScrollArea(this);
  scroller->setObjectName(QStringLiteral("panel_area"));
  scroller->setFrameShape(QFrame::NoFrame);
  scroller->setFocusPolicy(Qt::NoFocus);
  scroller->setWidgetResizable(true);
  scroller->setWidget(content);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(beside_choices_ = make_splitter(*scroller));
}

/// The Life panel has the whole height where there is room beside the choices, else the
/// height of the grid.
void FitWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const bool has_room = width() >= choices_->minimumSize().width() + life_.tall_width() + 4 * gap;
  QSplitter& place = has_room ? *beside_choices_ : *below_choices_;
  if (life_.parentWidget() == &place) return;
  const bool was_hidden = life_.isHidden();
  life_.set_tall(has_room);
  place.addWidget(&life_);
  place.setSizes({width() - life_.minimumWidth(), life_.minimumWidth()});
  life_.setHidden(was_hidden);
}

void FitWindow::choose(const std::function<void()>& choice) {
  commands_.run([&] {
    choice();
    show_choices();
    emit choices_changed();
  });
}

QWidget* FitWindow::make_model_frame() {
  model_frame_ = new QGroupBox(tr("Model"));
  model_frame_->setObjectName(QStringLiteral("fra_Model"));
  model_frame_->installEventFilter(this);
  new QGridLayout(model_frame_);
  chk_Big_ = new QCheckBox(tr("Na&mes"));
  chk_Big_->setObjectName(QStringLiteral("chk_Big"));
  chk_Big_->setToolTip(tr("Show the names of the models"));
  connect(chk_Big_, &QCheckBox::toggled, this, &FitWindow::place_model_options);
  connect(qApp, &QApplication::focusChanged, chk_Big_, [this](QWidget*, QWidget* now) {
    if (now && !model_frame_->isAncestorOf(now) && !model_frame_->underMouse())
      chk_Big_->setChecked(false);
  });
  for (const ModelOption& option : model_options()) add_model_option(option);
  place_model_options(false);
  connect(&opt_Model_, &QButtonGroup::idClicked, this, [this](int option) {
    choose([&] {
      stepping_ ? choose_model(session_, index_, option)
                : opt_Model_Click(session_, index_, option);
    });
    if (!stepping_ && !model_of_option(option)) emit wizard_wanted();
  });
  return model_frame_;
}

void FitWindow::add_model_option(const ModelOption& option) {
  auto* button = new QRadioButton(to_qt(option.caption), model_frame_);
  button->setObjectName(option_name("opt_Model", option.index));
  button->setAccessibleName(to_qt(option.label));
  button->installEventFilter(this);
  opt_Model_.addButton(button, option.index);
}

/// One that can't be fitted by the method stays within reach: a click on it says what there is
/// to say.
void FitWindow::show_what_fits() {
  const int method = session_.gFitForm(index_)->nMethod;
  for (const ModelOption& option : model_options()) {
    const Reasoned what = what_of_option(option, method);
    QAbstractButton& button = *opt_Model_.button(option.index);
    button.setToolTip(to_qt(what.tip));
    QPalette colours = palette();
    if (!what.fits)
      colours.setColor(QPalette::WindowText,
                       colours.color(QPalette::Disabled, QPalette::WindowText));
    button.setPalette(colours);
  }
}

void FitWindow::place_model_options(bool with_labels) {
  auto& grid = *static_cast<QGridLayout*>(model_frame_->layout());
  const int columns = with_labels ? 2 : 6;
  for (const ModelOption& option : model_options()) {
    QAbstractButton* button = opt_Model_.button(option.index);
    const bool labelled = with_labels && option.label[0] != '\0';
    button->setText(to_qt(option.caption) +
                    (labelled ? QStringLiteral("  ") + to_qt(option.label) : QString()));
    // The frame owns the key of the letter, so that it works from every window.
    button->setShortcut({});
    grid.removeWidget(button);
    grid.addWidget(button, option.index / columns, option.index % columns);
  }
  const int count = static_cast<int>(model_options().size());
  grid.removeWidget(chk_Big_);
  grid.addWidget(chk_Big_, count / columns, count % columns, 1, columns - count % columns);
  grid.setContentsMargins(gap, 2, gap, 4);
  grid.setHorizontalSpacing(3);
  grid.setVerticalSpacing(2);
}

QWidget* FitWindow::make_method_frame() {
  auto* frame = new QGroupBox(tr("Method"));
  frame->setObjectName(QStringLiteral("fra_Method"));
  auto* rows = new QVBoxLayout(frame);
  rows->setContentsMargins(gap, 2, gap, 4);
  rows->setSpacing(2);
  for (const Method& method : methods()) {
    auto* button = new QRadioButton(to_qt(method.panel_caption));
    button->setObjectName(option_name("opt_Method", method.code));
    button->setToolTip(to_qt(method_menu_caption(method.code)));
    button->installEventFilter(this);
    opt_Method_.addButton(button, method.code);
    rows->addWidget(button);
  }
  rows->addWidget(make_censored_box());
  rows->addStretch(1);
  connect(&opt_Method_, &QButtonGroup::idClicked, this, [this](int option) {
    choose([&] {
      const auto method = static_cast<std::int16_t>(option);
      emit hint_wanted(to_qt(method_status(method)));
      stepping_ ? choose_method(session_, index_, method)
                : opt_Method_Click(session_, index_, method);
    });
  });
  return frame;
}

QWidget* FitWindow::make_censored_box() {
  chk_Censored_ = new QCheckBox(tr("Censored"));
  chk_Censored_->setObjectName(QStringLiteral("chk_Censored"));
  chk_Censored_->setToolTip(
      tr("Takes suspensions into the likelihood of a mixture or of a Weibull with a minimum life.\n"
         "It holds for the fits made from now on, beside those that stand."));
  connect(chk_Censored_, &QCheckBox::clicked, this, [this](bool checked) {
    commands_.run([&] {
      emit hint_wanted(to_qt(censored_status(checked)));
      chk_Censored_Click(session_, index_, checked);
    });
  });
  return chk_Censored_;
}

QWidget* FitWindow::make_action_column() {
  auto* column = new QWidget;
  auto* rows = new QVBoxLayout(column);
  rows->setContentsMargins(0, gap, 0, 0);
  txt_Custom_ = new QLabel;
  txt_Custom_->setObjectName(QStringLiteral("txt_Custom"));
  txt_Custom_->setToolTip(tr("Plot and formula of the model"));
  QWidget* const waiting = make_waiting();
  btn_Fit_ = new QPushButton;
  btn_Fit_->setObjectName(QStringLiteral("btn_Fit"));
  btn_Fit_->setMinimumHeight(fontMetrics().height() * 2);
  btn_Fit_->setToolTip(tr("Fits the chosen model to the times of the sheet (Alt+C)"));
  set_button_caption(to_qt(button_caption(session_.LanguageText, language_text::calculate)));
  connect(btn_Fit_, &QPushButton::clicked, this,
          commands_.slot([this] { CheckAndFit(session_, index_); }));
  rows->addWidget(btn_Fit_, 0, Qt::AlignLeft);
  rows->addWidget(waiting);
  rows->addWidget(txt_Custom_);
  rows->addStretch(1);
  return column;
}

// A fit that is over at once shows none of this: it would only flicker.
QWidget* FitWindow::make_waiting() {
  constexpr int milliseconds_of_patience = 500;
  auto* waiting = new QWidget;
  auto* row = new QHBoxLayout(waiting);
  row->setContentsMargins(0, 0, 0, 0);
  btn_Cancel_ = new QPushButton(tr("Cancel (Esc)"));
  btn_Cancel_->setObjectName(QStringLiteral("btn_Cancel"));
  btn_Cancel_->setToolTip(tr("Gives the fit up; what stands already stays. Esc does the same."));
  btn_Cancel_->setProperty("stops_work", true);  // the one that a click reaches meanwhile
  btn_Cancel_->setFocusPolicy(Qt::NoFocus);
  bar_ = new QProgressBar;
  bar_->setObjectName(QStringLiteral("bar_Fit"));
  bar_->setAccessibleName(tr("Progress of the fit"));
  bar_->setTextVisible(false);
  bar_->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
  row->addWidget(btn_Cancel_);
  row->addWidget(bar_);
  row->addStretch(1);
  patience_.setInterval(milliseconds_of_patience);
  // While a box waits for the person, the person does not wait for the fit.
  connect(&patience_, &QTimer::timeout, this,
          [this] { show_waiting(!QApplication::activeModalWidget()); });
  show_waiting(false);
  return waiting;
}

void FitWindow::show_waiting(bool waits) {
  bar_->setRange(0, 0);  // it runs to and fro: how long a search takes nobody knows before
  btn_Cancel_->setVisible(waits);
  bar_->setVisible(waits);
  txt_Custom_->setHidden(waits);
}

void FitWindow::set_button_caption(const QString& caption) {
  if (session_.gFitForm(index_)->busy) {
    patience_.start();
  } else {
    patience_.stop();
    show_waiting(false);
  }
  btn_Fit_->setText(caption);
  // The frame owns Alt+C, so that it works from every child window; a second
  // owner would make the key ambiguous.
  btn_Fit_->setShortcut({});
  btn_Fit_->repaint();
}

void FitWindow::set_up_grid() {
  grd_Fit_.setObjectName(QStringLiteral("grd_Fit"));
  grd_Fit_.setAccessibleName(tr("Fits"));
  model_.set_row_tips([this](int row) { return notes_at(session_, index_, row); });
  model_.set_signs(fit_column::model, [this](int row) { return sign_of(row); });
  model_.set_colours([this](int row, int) {
    return is_out_of_date_at(session_, index_, row) ? CellColour::grey : CellColour::usual;
  });
  model_.set_boxes([this](int row) { return box_of(row); },
                   [this](int row, bool shown) { tick(row, shown); });
  connect(&grd_Fit_, &QTableView::clicked, this, &FitWindow::show_row);
  connect(&grd_Fit_, &QTableView::activated, this, &FitWindow::show_row);
  grd_Fit_.setModel(&model_);
  set_table_look(grd_Fit_);
  connect(grd_Fit_.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { show_life_of_current(); });
  grd_Fit_.setTabKeyNavigation(false);
  grd_Fit_.verticalHeader()->hide();
  grd_Fit_.setMinimumHeight(fontMetrics().height() * 4);
}

QString FitWindow::sign_of(int grid_row) const {
  if (!fit_at(session_, index_, grid_row).is_first_row) return {};
  if (is_out_of_date_at(session_, index_, grid_row)) return QStringLiteral("outdated");
  return notes_at(session_, index_, grid_row).empty() ? QString() : QStringLiteral("note");
}

/// The first row of a fit tells whether the chart draws it, and in which colour.
std::optional<CellBox> FitWindow::box_of(int grid_row) const {
  const GridFit fit = fit_at(session_, index_, grid_row);
  if (!fit.is_first_row) return std::nullopt;
  const auto colour = shown_colour(session_, index_, fit.slot);
  return CellBox{colour.has_value(), colour ? to_qt_colour(*colour) : QColor(),
                 tr("Draws the line of the fit on the chart")};
}

void FitWindow::tick(int grid_row, bool shown) {
  commands_.run(
      [&] { set_shown(session_, index_, fit_at(session_, index_, grid_row).slot, shown); });
}

void FitWindow::toggle_shown() {
  const GridFit fit = fit_at(session_, index_, current_row());
  if (fit.slot == 0) return;
  set_shown(session_, index_, fit.slot, !shown_colour(session_, index_, fit.slot));
}

void FitWindow::choose_colour() {
  const int slot = fit_at(session_, index_, current_row()).slot;
  const auto colour = slot == 0 ? std::nullopt : shown_colour(session_, index_, slot);
  if (!colour) return emit hint_wanted(tr("The chart does not show this fit: tick its box first"));
  ColourDialog::choose(this, commands_, {.colour = *colour}, ColourDialog::Asks::colour,
                       [this, slot](const PenLook& chosen) {
                         set_shown_colour(session_, index_, slot, chosen.colour);
                       });
}

std::string FitWindow::notes() const {
  return current_row() == 0 ? std::string() : notes_at(session_, index_, current_row());
}

/// The fit that has just come is the one that the person wants to know of; where fits come and
/// go otherwise, the one that the chart shows.
void FitWindow::go_to_shown_fit() {
  const int shown = session_.settings.ShowLast ? followed_fit(session_, index_) : 0;
  const auto is_it = [&](int row) {
    const GridFit fit = fit_at(session_, index_, row);
    return fit.is_first_row && (shown == 0 || fit.slot == shown);
  };
  int row = model_.rowCount();
  while (row > 1 && !is_it(row)) --row;
  grd_Fit_.selectionModel()->setCurrentIndex(model_.at(row, fit_column::quality),
                                             QItemSelectionModel::Clear);
}

// Where nothing is selected the whole grid is meant, not the one cell that a mark has led to.
void FitWindow::mirror_selection() {
  if (grd_Fit_.selectionModel()->hasSelection()) return model_.mirror_selection(grd_Fit_);
  Grid& grid = session_.gFitForm(index_)->grd_Fit;
  if (grid.rows() < 2) return;
  grid.go_to(1, 0);
  grid.select_to(grid.rows() - 1, grid.columns() - 1);
}

void FitWindow::show_life_of_current() { life_.show_fit_of(current_row()); }

/// The chart shows the fit of the row that was picked. Column 0 has its box.
void FitWindow::show_row(const QModelIndex& index) {
  const int row = model_.grid_row(index);
  const int slot = fit_at(session_, index_, row).slot;
  const bool extends =
      QApplication::keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
  if (slot == 0 || index.column() == 0 || extends) return;
  if (is_out_of_date_at(session_, index_, row)) return;
  commands_.run([&] {
    pick_fit(session_, index_, slot);
    session_.step = "Show Fit";
  });
}

void FitWindow::show_choices() {
  const FitPanel& panel = *session_.gFitForm(index_);
  if (QAbstractButton* model = opt_Model_.button(option_of(panel))) model->setChecked(true);
  if (QAbstractButton* method = opt_Method_.button(panel.nMethod)) method->setChecked(true);
  chk_Censored_->setChecked(panel.censored);
  chk_Censored_->setEnabled(panel.nMethod == method_code::mle);
  show_what_fits();
  for (const QButtonGroup* group : {&opt_Model_, &opt_Method_}) stop_at_checked(*group);
  txt_Custom_->setText(in_lines(to_qt(panel.txt_Custom)));
}

void FitWindow::refresh_grid() {
  show_choices();
  const int rows = model_.rowCount();
  model_.refresh();
  fit_columns();
  if (model_.rowCount() > rows) grd_Fit_.scrollToBottom();
  const int shown = followed_fit(session_, index_);
  const bool shows_another =
      session_.settings.ShowLast && std::exchange(shown_, shown) != shown && shown > 0 &&
      (current_row() == 0 || fit_at(session_, index_, current_row()).slot != shown);
  if (model_.rowCount() > 0 && (model_.rowCount() != rows || shows_another)) go_to_shown_fit();
  show_life_of_current();
}

// Wide enough for the heading, for a usual number and for what stands there.
void FitWindow::fit_columns() {
  const QFontMetrics metrics = grd_Fit_.fontMetrics();
  const int margin = metrics.horizontalAdvance(QStringLiteral("XX"));
  const int number = metrics.horizontalAdvance(QStringLiteral("12.888888"));
  bool has_sign = false;
  for (int row = 1; row <= model_.rowCount(); ++row) has_sign |= !sign_of(row).isEmpty();
  for (int c = 0; c < model_.columnCount(); ++c) {
    const QString heading = model_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
    int width = metrics.horizontalAdvance(heading);
    if (c == fit_column::number)
      width += style()->pixelMetric(QStyle::PM_IndicatorWidth) +
               style()->pixelMetric(QStyle::PM_SmallIconSize);
    if (c == fit_column::quality || c == fit_column::scale || c == fit_column::shape)
      width = std::max(width, number);
    for (int r = 0; r < model_.rowCount(); ++r)
      width = std::max(width, metrics.horizontalAdvance(model_.index(r, c).data().toString()));
    if (c == fit_column::model && has_sign)
      width += style()->pixelMetric(QStyle::PM_SmallIconSize) + margin / 2;
    grd_Fit_.setColumnWidth(c, width + margin);
  }
}

// A focus proxy would take the button out of the round of the Tab key.
void FitWindow::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  btn_Fit_->setFocus();
}

// A radio button clicks the next one when an arrow key goes there. On the way to a model
// nobody wants the fits of those between: the arrows choose, Space and Enter calculate.
bool FitWindow::option_key(QObject& option, QEvent& event) {
  switch (static_cast<QKeyEvent&>(event).key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down: {
      const QScopedValueRollback stepping(stepping_, true);
      option.event(&event);
      return true;
    }
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter: commands_.run([this] { CheckAndFit(session_, index_); }); return true;
    default: return false;
  }
}

// The names take the room of the grid: they close again when the mouse leaves the frame, or the
// focus where a key has opened them.
bool FitWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == model_frame_ && event->type() == QEvent::Leave) chk_Big_->setChecked(false);
  if (watched != model_frame_ && event->type() == QEvent::KeyPress)
    return option_key(*watched, *event);
  return QWidget::eventFilter(watched, event);
}

}  // namespace tavlo
