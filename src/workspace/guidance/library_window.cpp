#include "workspace/guidance/library_window.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QStyleOptionHeader>
#include <QStylePainter>
#include <QVBoxLayout>

#include "actions/analysis_row.h"
#include "actions/copied_table.h"
#include "project/grid.h"
#include "workspace/guidance/row_form.h"
#include "workspace/qt/icons.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int most_natural_columns = 9;
constexpr int most_copied_rows = 10'000;
constexpr qsizetype most_shown_notes = 4;

QPushButton* make_library_button(const QString& caption, const char* name, const char* image) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  if (*image) button->setIcon(icon(QString::fromLatin1(image)));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

LibraryWindow::LibraryWindow(Session& session, UserCommands& commands,
                             std::function<int()> set_at_work, QWidget* parent)
    : QDialog(parent),
      session_(session),
      commands_(commands),
      set_at_work_(std::move(set_at_work)),
      library_(default_library()),
      model_(library_, this),
      fields_(library_) {
  setObjectName(QStringLiteral("frm_lib"));
  setWindowTitle(tr("Library Viewer"));
  tabs_.setObjectName(QStringLiteral("tab_Lib"));
  tabs_.addTab(make_data_tab(), tr("Data"));
  tabs_.addTab(&fields_, tr("Fields"));
  connect(&fields_, &ColumnEditor::changed, this, [this] { search(); });
  connect(&fields_, &ColumnEditor::rearranged, this, [this] {
    note_mismatch(library_);
    show_notes();
  });
  connect(&fields_, &ColumnEditor::save_wanted, this, commands_.slot([this] {
    save_library(session_, library_);
    show_library();
  }));
  connect(&fields_, &ColumnEditor::image_pressed, this,
          [this](int number) { commands_.run([this, number] { press_image(number); }); });
  lbl_Notes_.setObjectName(QStringLiteral("lbl_Notes"));
  lbl_Notes_.setWordWrap(true);
  lbl_Notes_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(make_head());
  rows->addWidget(&tabs_, 1);
  rows->addWidget(&lbl_Notes_);
  resize(fontMetrics().averageCharWidth() * 115, fontMetrics().height() * 32);
}

QWidget* LibraryWindow::make_head() {
  auto* head = new QWidget;
  auto* parts = new QHBoxLayout(head);
  parts->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(tr("Source Li&brary"));
  caption->setBuddy(&cbo_Lib_);
  cbo_Lib_.setObjectName(QStringLiteral("cbo_Lib"));
  cbo_Lib_.setPlaceholderText(tr("No library is open"));
  cbo_Lib_.setMinimumContentsLength(20);
  cbo_Lib_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(&cbo_Lib_, &QComboBox::activated, this, [this](int place) { take(place); });
  auto* open = make_library_button(tr("Open Librar&y..."), "cmd_OpenLib", "open");
  connect(open, &QPushButton::clicked, this, commands_.slot([this] {
    if (choose_library(session_, library_)) tabs_.setCurrentIndex(0);
    show_library();
  }));
  auto* close = make_library_button(tr("Close"), "cmd_Close", "");
  connect(close, &QPushButton::clicked, this, &LibraryWindow::reject);
  parts->addWidget(caption);
  parts->addWidget(&cbo_Lib_, 1);
  parts->addWidget(open);
  parts->addWidget(close);
  return head;
}

QWidget* LibraryWindow::make_data_tab() {
  auto* tab = new QWidget;
  auto* rows = new QVBoxLayout(tab);
  txt_Search_.setObjectName(QStringLiteral("txt_Search"));
  txt_Search_.setToolTip(tr("Enter Search text.  Separate search items with a space"));
  txt_Search_.setPlaceholderText(tr("Search"));
  txt_Search_.setAccessibleName(tr("Search"));
  txt_Search_.setClearButtonEnabled(true);
  connect(&txt_Search_, &QLineEdit::textChanged, this, [this] { search(); });
  auto* line = new QHBoxLayout;
  line->addWidget(&txt_Search_, 1);
  lbl_Found_.setObjectName(QStringLiteral("lbl_Found"));
  line->addWidget(&lbl_Found_);
  rows->addLayout(line);
  set_up_table();
  rows->addWidget(&grd_Lib_, 1);
  rows->addWidget(make_data_buttons());
  return tab;
}

QWidget* LibraryWindow::make_data_buttons() {
  auto* row = new QWidget;
  auto* buttons = new QHBoxLayout(row);
  buttons->setContentsMargins(0, 0, 0, 0);
  auto* add = make_library_button(tr("Ne&w Row..."), "cmd_NewRow", "new");
  add->setToolTip(tr("A row from the present analysis"));
  connect(add, &QPushButton::clicked, this, commands_.slot([this] { new_row(); }));
  auto* copy = make_library_button(tr("&Copy Rows"), "cmd_CopyRows", "copy");
  copy->setToolTip(tr("Copies the selected rows with their headings"));
  connect(copy, &QPushButton::clicked, this, commands_.slot([this] { copy_rows(); }));
  auto* open = make_library_button(tr("Open &Data File..."), "cmd_OpenData", "open");
  connect(open, &QPushButton::clicked, this, commands_.slot([this] { press_image(0); }));
  buttons->addWidget(add);
  buttons->addWidget(copy);
  buttons->addStretch(1);
  buttons->addWidget(open);
  return row;
}

void LibraryWindow::set_up_table() {
  grd_Lib_.setObjectName(QStringLiteral("grd_Lib"));
  grd_Lib_.setAccessibleName(tr("Rows of the library"));
  grd_Lib_.setModel(&model_);
  set_table_look(grd_Lib_);
  grd_Lib_.setSelectionBehavior(QAbstractItemView::SelectRows);
  grd_Lib_.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  if (auto* const corner = grd_Lib_.findChild<QAbstractButton*>()) corner->installEventFilter(this);
  auto* const copy_key = new QShortcut(QKeySequence::Copy, &grd_Lib_);
  copy_key->setContext(Qt::WidgetShortcut);
  connect(copy_key, &QShortcut::activated, this, commands_.slot([this] { copy_rows(); }));
}

/// The corner of a table has no words of its own.
bool LibraryWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Paint) return QDialog::eventFilter(watched, event);
  paint_corner(*static_cast<QWidget*>(watched));
  return true;
}

void LibraryWindow::paint_corner(QWidget& corner) {
  QStyleOptionHeader option;
  option.initFrom(&corner);
  option.text = tr("Row");
  option.textAlignment = Qt::AlignCenter;
  option.position = QStyleOptionHeader::OnlyOneSection;
  QStylePainter(&corner).drawControl(QStyle::CE_Header, option);
}

void LibraryWindow::open_window() {
  if (!is_opened_) {
    is_opened_ = true;
    library_ = first_library(session_);
    show_library();
    txt_Search_.setFocus();
  }
  show();
  raise();
  activateWindow();
}

void LibraryWindow::reject() {
  commands_.run([this] {
    if (may_close()) QDialog::reject();
  });
}

void LibraryWindow::show_library() {
  show_names();
  search();
  fields_.show_library();
  show_notes();
  set_widths();
}

/// Few columns have room for what is in them.
void LibraryWindow::set_widths() {
  QHeaderView& header = *grd_Lib_.horizontalHeader();
  for (int column = 0; column < header.count(); ++column)
    header.resizeSection(column, header.defaultSectionSize());
  if (header.count() <= most_natural_columns) grd_Lib_.resizeColumnsToContents();
}

void LibraryWindow::show_names() {
  cbo_Lib_.clear();
  for (const std::string& folder : known_libraries(session_)) cbo_Lib_.addItem(to_qt(folder));
  const QString folder = to_qt(library_.folder);
  if (!folder.isEmpty() && cbo_Lib_.findText(folder) < 0) cbo_Lib_.addItem(folder);
  cbo_Lib_.setCurrentIndex(folder.isEmpty() ? -1 : cbo_Lib_.findText(folder));
}

void LibraryWindow::show_notes() {
  QStringList notes;
  if (library_.folder.empty() && library_.data_path.empty())
    notes << tr("Choose a library above: the sample library shows what one looks like.");
  for (const auto* const some : {&library_.notes, &library_.data_notes})
    for (const std::string& note : *some) notes << to_qt(note);
  lbl_Notes_.setToolTip(notes.join(u'\n'));
  if (const qsizetype more = notes.size() - most_shown_notes; more > 0) {
    notes = notes.first(most_shown_notes);
    notes << tr("... and %1 more").arg(more);
  }
  lbl_Notes_.setText(notes.join(u'\n'));
  lbl_Notes_.setVisible(!notes.isEmpty());
}

void LibraryWindow::search() {
  model_.show_rows_with(txt_Search_.text());
  const auto rows = static_cast<qlonglong>(library_.rows.count() - library_.first_row());
  const bool is_whole = model_.rowCount() == rows;
  const QString all = rows == 1 ? tr("1 row") : tr("%1 rows").arg(rows);
  lbl_Found_.setText(library_.data_path.empty() ? tr("No data file is open")
                     : is_whole                 ? all
                                                : tr("%1 of %2").arg(model_.rowCount()).arg(all));
}

void LibraryWindow::take(int place) {
  const std::string folder = from_qt(cbo_Lib_.itemText(place));
  commands_.run([this, folder] {
    if (may_leave_library(session_, library_)) take_library(session_, folder, library_);
    show_library();
    tabs_.setCurrentIndex(0);
  });
}

void LibraryWindow::press_image(int number) {
  if (number == 0)
    choose_library_data(session_, library_);
  else
    tell_not_programmed(session_, number);
  show_library();
}

void LibraryWindow::new_row() {
  const auto& columns = library_.definition.columns;
  const auto keep = [this](const std::vector<std::string>& fields) {
    bool kept = false;
    commands_.run([&] { kept = keep_row(session_, fields, library_); });
    show_library();
    if (kept) grd_Lib_.scrollToBottom();
    return kept;
  };
  RowForm::run(
      library_, analysis_row(session_, set_at_work_(), columns), keep,
      [this](const std::vector<std::string>& fields) { copy({fields}); }, this);
}

void LibraryWindow::copy_rows() {
  const QModelIndexList chosen = grd_Lib_.selectionModel()->selectedRows();
  if (chosen.isEmpty()) return session_.ports.views.status("Select the rows to copy first.");
  if (chosen.size() > most_copied_rows) return tell_too_many_rows(session_, most_copied_rows);
  std::vector<std::vector<std::string>> rows;
  for (const QModelIndex& row : chosen) rows.push_back(model_.fields(row.row()));
  copy(rows);
}

void LibraryWindow::copy(const std::vector<std::vector<std::string>>& rows) {
  const auto& columns = library_.definition.columns;
  Grid table(static_cast<int>(rows.size()) + 1, static_cast<int>(columns.size()));
  for (int column = 0; column < table.columns(); ++column) {
    const auto place = static_cast<std::size_t>(column);
    table.set_text(0, column, columns[place].Name);
    for (int row = 1; row < table.rows(); ++row)
      table.set_text(row, column, rows[static_cast<std::size_t>(row) - 1][place]);
  }
  session_.ports.clipboard.set_text(copied_table(
      table, {1, 0, table.rows() - 1, table.columns() - 1}, session_.settings.punctuation));
}

}  // namespace tavlo
