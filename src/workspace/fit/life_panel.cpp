#include "workspace/fit/life_panel.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

#include "actions/life_marks.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

enum Column { name_column, answer_column, mark_column, column_count };

constexpr int tight_gap = 4;

}  // namespace

LifePanel::LifePanel(Session& session, UserCommands& commands, int fit_index, QWidget* parent)
    : QFrame(parent), session_(session), commands_(commands), index_(fit_index) {
  setObjectName(QStringLiteral("fra_Life"));
  setAccessibleName(tr("Life"));
  set_up_answers();
  lbl_Remark_.setObjectName(QStringLiteral("lbl_LifeRemark"));
  lbl_Reason_.setObjectName(QStringLiteral("lbl_LifeReason"));
  for (QLabel* label : {&lbl_Remark_, &lbl_Reason_}) {
    label->setWordWrap(true);
    // A layout in a splitter asks no wrapped text for its height.
    label->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  }
  auto* cells = new QGridLayout(this);
  cells->setSpacing(tight_gap);
  cells->addWidget(&lbl_Reason_, 1, 0, 1, 2);
  cells->addWidget(&grd_Life_, 2, 0, 1, 2);
  cells->addWidget(&lbl_Remark_, 3, 0, 1, 2);
  cells->setRowStretch(2, 1);
  questions_ = make_questions();
  buttons_ = make_buttons();
  set_tall(false);
  lbl_Reason_.hide();
  show_fit_of(0);
}

void LifePanel::set_up_answers() {
  grd_Life_.setObjectName(QStringLiteral("grd_Life"));
  grd_Life_.setAccessibleName(tr("Life of the chosen fit"));
  grd_Life_.setColumnCount(column_count);
  grd_Life_.setHorizontalHeaderLabels({tr("Life"), tr("Answer"), QString()});
  grd_Life_.horizontalHeaderItem(mark_column)->setData(Qt::AccessibleTextRole, tr("Mark"));
  grd_Life_.horizontalHeaderItem(mark_column)->setToolTip(tr("Marks an answer on the chart"));
  grd_Life_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  grd_Life_.setSelectionBehavior(QAbstractItemView::SelectRows);
  grd_Life_.setSelectionMode(QAbstractItemView::SingleSelection);
  grd_Life_.setTabKeyNavigation(false);
  set_table_look(grd_Life_);
  grd_Life_.verticalHeader()->hide();
  grd_Life_.horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  grd_Life_.horizontalHeader()->setSectionResizeMode(answer_column, QHeaderView::Stretch);
  grd_Life_.setMinimumHeight(fontMetrics().height() * 3);
  grd_Life_.installEventFilter(this);
  connect(&grd_Life_, &QTableWidget::currentCellChanged, this, [this] {
    show_what_works();
    emit row_chosen();
  });
  connect(&grd_Life_, &QTableWidget::cellClicked, this, [this](int, int column) {
    if (column == mark_column) commands_.run([this] { mark(); });
  });
}

void LifePanel::add_question(QHBoxLayout& row, QLineEdit& field, const char* name,
                             const QString& caption, const QString& tip, Ask ask) {
  auto* label = new QLabel(caption);
  label->setBuddy(&field);
  label->setToolTip(tip);
  field.setObjectName(to_qt(name));
  field.setToolTip(tip);
  field.setAccessibleName(caption);
  field.setAccessibleDescription(tip);
  field.setFixedWidth(fontMetrics().averageCharWidth() * 7);
  connect(&field, &QLineEdit::returnPressed, this,
          [this, &field, ask] { commands_.run([&] { take(field, ask); }); });
  connect(&field, &QLineEdit::textEdited, this, [this, &field] { show_reason(field, {}); });
  row.addWidget(label);
  row.addWidget(&field);
}

void LifePanel::set_tall(bool is_tall) {
  auto& cells = *static_cast<QGridLayout*>(layout());
  cells.addWidget(questions_, 0, 0, 1, is_tall ? 2 : 1);
  cells.addWidget(buttons_, is_tall ? 4 : 0, 1, Qt::AlignRight);
  grd_Life_.horizontalHeader()->setVisible(is_tall);  // a low one needs each line for answers
  const int edge = is_tall ? tight_gap : 0;
  cells.setContentsMargins(tight_gap, edge, edge, edge);
  const int beside = questions_->sizeHint().width() + buttons_->sizeHint().width();
  setMinimumWidth(is_tall ? tall_width() : beside + 3 * tight_gap);
}

/// Answers are read to all their digits.
int LifePanel::tall_width() const {
  const QFontMetrics letters = fontMetrics();
  const int words = letters.horizontalAdvance(QStringLiteral("Mean life0000.0000"));
  return std::max(letters.averageCharWidth() * 24, words + letters.height() * 7 / 2);
}

QWidget* LifePanel::make_questions() {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(tight_gap);
  add_question(*row, txt_Percent_, "txt_Percent", tr("B %"),
               tr("Percentages failed, for the times by which they have: 5 or 1; 20. Enter adds "
                  "them, Delete takes a row of the table off again."),
               ask_percents);
  add_question(*row, txt_Time_, "txt_Time", tr("R at"),
               tr("Times, for the share that survives them. Enter adds them, Delete takes a row "
                  "of the table off again."),
               ask_times);
  row->addStretch(1);
  return line;
}

/// What can be done with the table.
QWidget* LifePanel::make_buttons() {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(tight_gap);
  const auto make = [&](const char* name, const QString& caption) {
    auto* button = new QToolButton;
    button->setObjectName(to_qt(name));
    button->setText(caption);
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
    return button;
  };
  btn_Mark_ = make("btn_MarkLife", tr("Mark"));
  btn_Copy_ = make("btn_CopyLife", tr("Copy"));
  connect(btn_Mark_, &QToolButton::clicked, this, commands_.slot([this] { mark(); }));
  connect(btn_Copy_, &QToolButton::clicked, this, commands_.slot([this] { copy(); }));
  return line;
}

void LifePanel::show_fit_of(int grid_row) {
  grid_row_ = grid_row;
  table_ = life_table(session_, index_, grid_row);
  show_answers();
}

void LifePanel::put(int row, int column, const QString& text, const std::string& tip) {
  auto* item = new QTableWidgetItem(text);
  item->setToolTip(to_qt(tip));
  if (column == answer_column) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grd_Life_.setItem(row, column, item);
}

void LifePanel::show_answers() {
  const int row_before = std::max(grd_Life_.currentRow(), 0);
  grd_Life_.horizontalHeaderItem(answer_column)
      ->setText(table_.fit.empty() ? tr("Answer") : to_qt(table_.fit));
  lbl_Remark_.setText(to_qt(table_.remark));
  lbl_Remark_.setVisible(!table_.remark.empty());
  grd_Life_.setRowCount(static_cast<int>(table_.rows.size()));
  for (int r = 0; r < grd_Life_.rowCount(); ++r) {
    const LifeAnswer& row = table_.rows[static_cast<std::size_t>(r)];
    put(r, name_column, to_qt(row.name), row.tip);
    put(r, answer_column, to_qt(row.answer), row.tip);
    put(r, mark_column, row.time ? QStringLiteral("\u25B6") : QString(),
        from_qt(row.time ? tr("Marks it on the chart") : QString()));
    grd_Life_.item(r, mark_column)->setTextAlignment(Qt::AlignCenter);
  }
  grd_Life_.setCurrentCell(std::min(row_before, grd_Life_.rowCount() - 1), name_column);
  show_what_works();
}

/// A grey button says why.
void LifePanel::show_what_works() {
  const LifeAnswer* row = current();
  const bool is_asked = !table_.rows.front().answer.empty();
  const bool has_place = row && row->time;
  btn_Copy_->setEnabled(is_asked);
  btn_Copy_->setToolTip(is_asked ? tr("Copies the whole table (Ctrl+Shift+B)")
                                 : to_qt(table_.remark));
  btn_Mark_->setEnabled(has_place);
  btn_Mark_->setToolTip(has_place ? tr("Marks the chosen row on the chart (Ctrl+M)")
                                  : to_qt(why_not_marked()));
}

const LifeAnswer* LifePanel::current() const {
  const int row = grd_Life_.currentRow();
  const bool is_there = row >= 0 && row < static_cast<int>(table_.rows.size());
  return is_there ? &table_.rows[static_cast<std::size_t>(row)] : nullptr;
}

std::string LifePanel::why_not_marked() const {
  const LifeAnswer* row = current();
  return row ? tavlo::why_not_marked(session_, index_, table_, *row)
             : "Choose a row of the Life panel first.";
}

std::string LifePanel::why_not_copied() const {
  return table_.rows.front().answer.empty() ? table_.remark : std::string();
}

void LifePanel::mark() {
  const std::string reason = why_not_marked();
  if (!reason.empty()) return emit hint_wanted(to_qt(reason));
  const LifeAnswer row = *current();
  mark_on_chart(session_, index_, table_, row);
  emit hint_wanted(tr("Marked on the chart: %1 = %2").arg(to_qt(row.name), to_qt(row.answer)));
}

bool LifePanel::copy() {
  const ClipboardText text = copied(table_, session_.settings.punctuation);
  if (text.plain.empty()) return false;
  session_.ports.clipboard.set_text(text);
  emit hint_wanted(tr("The life table is on the clipboard"));
  return true;
}

void LifePanel::take(QLineEdit& field, Ask ask) {
  const std::string reason = ask(session_, from_qt(field.text()));
  show_reason(field, reason);
  if (!reason.empty()) return;
  field.clear();
  tell_panels();
}

/// The questions are those of all panels.
void LifePanel::tell_panels() {
  for (int i = 1; i <= session_.project.fits.bound(); ++i) session_.ports.views.fit_grid_changed(i);
}

// A red frame alone would say nothing to who can't see it.
void LifePanel::show_reason(QLineEdit& field, const std::string& reason) {
  field.setStyleSheet(reason.empty() ? QString()
                                     : QStringLiteral("QLineEdit { border: 2px solid #c62828; }"));
  lbl_Reason_.setText(to_qt(reason));
  lbl_Reason_.setVisible(!reason.empty());
}

void LifePanel::drop_current() {
  const LifeAnswer* row = current();
  if (!row) return;
  drop_question(session_, LifeAnswer(*row));
  tell_panels();
}

bool LifePanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &grd_Life_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Delete) return commands_.run([this] { drop_current(); }), true;
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
      return commands_.run([this] { mark(); }), true;
  }
  return QFrame::eventFilter(watched, event);
}

}  // namespace tavlo
