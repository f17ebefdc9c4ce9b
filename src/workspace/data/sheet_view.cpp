#include "workspace/data/sheet_view.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>
#include <algorithm>
#include <array>
#include <optional>

#include "workspace/qt/look.h"
#include "workspace/qt/qt_ports.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

constexpr Qt::KeyboardModifiers command_keys =
    Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool types_text(const QKeyEvent& key) {
  return !(key.modifiers() & command_keys) && !key.text().isEmpty() && key.text()[0].isPrint();
}

bool clipboard_has_lines() {
  if (QtClipboard().is_too_long()) return true;
  const QString text = QGuiApplication::clipboard()->text().trimmed();
  return text.contains(u'\n') || text.contains(u'\r') || text.contains(u'\t');
}

/// One file of this computer, or a text.
bool holds_rows(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return data.hasUrls() ? urls.size() == 1 && urls[0].isLocalFile() : data.hasText();
}

/// Where a key in the edit box sends the current cell; nothing for other keys.
std::optional<EditDirection> edit_direction_of(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return EditDirection::none;
    case Qt::Key_Left:
    case Qt::Key_Backtab: return EditDirection::left;
    case Qt::Key_Right:
    case Qt::Key_Tab: return EditDirection::right;
    case Qt::Key_Up: return EditDirection::up;
    case Qt::Key_Down: return EditDirection::down;
    default: return std::nullopt;
  }
}

}  // namespace

SheetView::SheetView(DataSheet& sheet, UserCommands& commands, QWidget* parent)
    : QTableView(parent),
      sheet_(sheet),
      commands_(commands),
      model_(sheet, true, nullptr),
      edit_(viewport()) {
  setObjectName(QStringLiteral("grd_Data"));
  setAccessibleName(tr("Data sheet"));
  model_.set_colours([this](int row, int column) {
    if (sheet_.is_left_out(row)) return CellColour::grey;
    if (sheet_.is_unreadable(row, column)) return CellColour::red;
    const bool old_rank = column == sheet_column::y && !sheet_.data().is_read();
    return old_rank ? CellColour::grey : CellColour::usual;
  });
  model_.set_cell_tips([this](int row, int column) { return tip_of(row, column); });
  setModel(&model_);
  set_table_look(*this);
  setMouseTracking(true);
  viewport()->setAcceptDrops(true);
  set_up_columns();
  set_up_headings();
  set_up_edit_box();
  show_current_cell();
}

void SheetView::set_up_columns() {
  constexpr std::array<const char*, sheet_column::count> measures = {
      "8888", "Data X88", "Data X88", "# Fail8", "# Susp8", "Data X88", "Data X88"};
  const QFontMetrics metrics = fontMetrics();
  const int margin = metrics.horizontalAdvance(QStringLiteral("XX"));
  for (int c = sheet_column::x; c < sheet_column::count; ++c) {
    const QString measure = to_qt(measures[static_cast<std::size_t>(c)]);
    setColumnWidth(c - 1, metrics.horizontalAdvance(measure) + margin);
  }
  QHeaderView& rows = *verticalHeader();
  rows.setMinimumWidth(metrics.horizontalAdvance(to_qt(measures[sheet_column::order])));
  horizontalHeader()->setStretchLastSection(true);
}

/// Why a cell is red, or a row grey.
std::string SheetView::tip_of(int row, int column) const {
  if (sheet_.is_left_out(row)) return "This row is left out of the analysis.";
  if (!sheet_.is_unreadable(row, column)) return {};
  return words_of_unread(column, sheet_.text(row, column));
}

/// The right button on a heading means the whole row or column under it.
void SheetView::set_up_headings() {
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& at) {
      const int section = header->logicalIndexAt(at);
      if (section < 0) return;
      leave_edit();
      const bool is_column = header == horizontalHeader();
      const QModelIndex first = model_.index(is_column ? 0 : section, is_column ? section : 0);
      if (!is_column && selectionModel()->isRowSelected(section)) {
        emit heading_menu_wanted(header->mapToGlobal(at));
        return;
      }
      setCurrentIndex(first);
      is_column ? selectColumn(section) : selectRow(section);
      emit heading_menu_wanted(header->mapToGlobal(at));
    });
  }
}

void SheetView::set_up_edit_box() {
  edit_.setObjectName(QStringLiteral("txt_Edit"));
  edit_.setAccessibleName(tr("Cell"));
  edit_.setMaxLength(1000);
  edit_.setAcceptDrops(false);  // dropped rows would run together into one number
  edit_.setStyleSheet(QStringLiteral(
      "QLineEdit { border: 1px solid palette(highlight); background: palette(base); }"));
  edit_.hide();
  edit_.installEventFilter(this);
  connect(&edit_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (sheet_.editing()) sheet_.set_edit_text(from_qt(text));
  });
}

/// An empty sheet says what to do.
void SheetView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (sheet_.last_row() > 0 || edit_.isVisible()) return;
  QPainter painter(viewport());
  painter.setPen(quiet_ink(palette()));
  const int line = fontMetrics().height();
  const QRect room = viewport()->rect().adjusted(line, line * 4, -line, -line);
  const QString words =
      tr("Type or paste times; s or > marks a suspension; or open an example (File > Examples).");
  const auto flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
  const QRect place = painter.boundingRect(room, flags, words);
  painter.fillRect(place.adjusted(-line / 2, -line / 4, line / 2, line / 4),
                   palette().color(QPalette::Base));
  painter.drawText(room, flags, words);
}

void SheetView::refresh() {
  if (!sheet_.editing()) close_edit_box();
  model_.refresh();
  make_room_for_ranks();
  show_current_cell();
}

/// Ranks may be shown with more digits than before.
void SheetView::make_room_for_ranks() {
  constexpr int column = sheet_column::y - 1;
  if (const int wanted = sizeHintForColumn(column); wanted > columnWidth(column))
    setColumnWidth(column, wanted);
}

void SheetView::show_current_cell() {
  const QModelIndex cell = model_.at(sheet_.row(), sheet_.column());
  if (cell.isValid() && cell != currentIndex()) setCurrentIndex(cell);
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2) {
    start_edit(currentIndex().data().toString());
  } else if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
    clear_selected();
  } else if (types_text(*event)) {
    start_edit(event->text());
  } else {
    QTableView::keyPressEvent(event);
  }
}

void SheetView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
    start_edit(currentIndex().data().toString());
}

void SheetView::start_edit(const QString& text) {
  const QModelIndex cell = currentIndex();
  if (!cell.isValid()) return;
  commands_.run([&] {
    sheet_.go_to(model_.grid_row(cell), model_.grid_column(cell));
    setCurrentIndex(cell);
    sheet_.start_edit(from_qt(text));
    edit_.setText(text);
    place_edit_box();
    edit_.show();
    edit_.setFocus();
    edit_.end(false);
  });
}

void SheetView::place_edit_box() {
  scrollTo(currentIndex());
  edit_.setGeometry(visualRect(currentIndex()));
}

void SheetView::close_edit_box() {
  if (edit_.isHidden()) return;
  // First the focus: hiding the box would pass it on as the Tab key does, and
  // the current cell with it. After a message the frame is not active yet, and
  // gets the keyboard back where its focus waits: that may not be a hidden box.
  if (window()->focusWidget() == &edit_) setFocus();
  edit_.hide();
}

void SheetView::finish_edit(EditDirection direction) {
  commands_.run([&] {
    sheet_.finish_edit(direction);
    skip_hidden(direction);
    refresh();
    emit edited(tr("Typing"));
    tell_remark();
  });
}

void SheetView::tell_remark() {
  if (!sheet_.remark().empty()) emit hint_wanted(to_qt(sheet_.remark()));
}

/// The cell moves on over columns that are hidden, and stays where none is behind them.
void SheetView::skip_hidden(EditDirection direction) {
  const int step = direction == EditDirection::right ? 1 : -1;
  int column = sheet_.column();
  while (column >= sheet_column::x && column < sheet_column::count && isColumnHidden(column - 1))
    column += step;
  if (column < sheet_column::x || column >= sheet_column::count)
    column = model_.grid_column(currentIndex());
  if (column != sheet_.column()) sheet_.go_to(sheet_.row(), column);
}

void SheetView::go_to_cell(int row, int column) {
  if (row < 1 || row >= sheet_.rows()) return;
  leave_edit();
  setCurrentIndex(model_.at(row, column));
  scrollTo(currentIndex());
  mirror_selection();
}

CellPlace SheetView::current_cell() const {
  const QModelIndex cell = currentIndex();
  return cell.isValid() ? CellPlace{model_.grid_row(cell), model_.grid_column(cell)} : CellPlace{};
}

GridBlock SheetView::selected_block() const {
  const QItemSelection selection = selectionModel()->selection();
  const CellPlace cell = current_cell();
  if (selection.isEmpty()) return {cell.row, cell.column, cell.row, cell.column};
  const QItemSelectionRange& block = selection.first();
  return {model_.grid_row(block.topLeft()), model_.grid_column(block.topLeft()),
          model_.grid_row(block.bottomRight()), model_.grid_column(block.bottomRight())};
}

void SheetView::select_block(const GridBlock& block) {
  const QModelIndex first = model_.at(block.first_row, block.first_column);
  const QModelIndex last =
      model_.at(std::min(block.last_row, sheet_.rows() - 1), block.last_column);
  if (!first.isValid() || !last.isValid()) return;
  setCurrentIndex(first);
  selectionModel()->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
  mirror_selection();
}

void SheetView::show_column(int column, bool is_shown) {
  setColumnHidden(column - 1, !is_shown);
  if (!isColumnHidden(current_cell().column - 1)) return;
  for (int other = sheet_column::x; other < sheet_column::count; ++other)
    if (!isColumnHidden(other - 1)) return go_to_cell(current_cell().row, other);
}

std::vector<int> SheetView::shown_columns() const {
  std::vector<int> shown;
  for (int column = sheet_column::x; column < sheet_column::count; ++column)
    if (!isColumnHidden(column - 1)) shown.push_back(column);
  return shown;
}

/// The last row of the block of cells that hold something, or the next one that does; the end
/// of the sheet where there is none.
int SheetView::edge_of_data(int column, int row, int step) const {
  const int end = step < 0 ? 1 : std::max(sheet_.last_row(), row);
  const int end_of_sheet = step < 0 ? 1 : sheet_.rows() - 1;
  if (row == end) return end_of_sheet;
  const bool in_block = !sheet_.is_empty(row, column) && !sheet_.is_empty(row + step, column);
  int at = row + step;
  if (in_block)
    while (at != end && !sheet_.is_empty(at + step, column)) at += step;
  else
    while (at != end && sheet_.is_empty(at, column)) at += step;
  return sheet_.is_empty(at, column) ? end_of_sheet : at;
}

/// Ctrl with an arrow goes to the edge of the data, Ctrl+End to its last row.
QModelIndex SheetView::moveCursor(CursorAction action, Qt::KeyboardModifiers with) {
  const QModelIndex cell = currentIndex();
  if (!(with & Qt::ControlModifier) || !cell.isValid()) return QTableView::moveCursor(action, with);
  const auto [row, column] = current_cell();
  switch (action) {
    case MoveUp: return model_.at(edge_of_data(column, row, -1), column);
    case MoveDown: return model_.at(edge_of_data(column, row, 1), column);
    case MoveLeft: return model_.at(row, shown_columns().front());
    case MoveRight: return model_.at(row, shown_columns().back());
    case MoveEnd: return model_.at(std::max(sheet_.last_row(), 1), shown_columns().back());
    default: return QTableView::moveCursor(action, with);
  }
}

void SheetView::cancel_edit() {
  sheet_.cancel_edit();
  close_edit_box();
}

void SheetView::leave_edit() {
  if (!sheet_.editing()) return;
  commands_.run([&] {
    sheet_.end_edit();
    close_edit_box();
    model_.refresh();
    emit edited(tr("Typing"));
    tell_remark();
  });
}

void SheetView::select_row(int row) {
  if (row < 1 || row >= sheet_.rows()) return;
  leave_edit();
  const QModelIndex cell = model_.at(row, sheet_column::x);
  setCurrentIndex(cell);
  selectRow(cell.row());
  scrollTo(cell);
  mirror_selection();
}

void SheetView::clear_selected() {
  commands_.run([&] {
    mirror_selection();
    sheet_.clear(sheet_.selection());
    model_.refresh();
    emit edited(tr("Delete"));
  });
}

bool SheetView::edit_key(QKeyEvent& key) {
  if (key.key() == Qt::Key_Escape) {
    cancel_edit();
    return true;
  }
  // Rows pasted into one cell would run together into one number.
  if (key.matches(QKeySequence::Paste) && clipboard_has_lines()) {
    leave_edit();
    emit rows_pasted();
    return true;
  }
  if (key.modifiers() & command_keys) return false;
  const auto direction = edit_direction_of(key.key());
  if (direction) finish_edit(*direction);
  return direction.has_value();
}

bool SheetView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &edit_) return QTableView::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) return edit_key(*static_cast<QKeyEvent*>(event));
  // A menu of the box itself takes the focus for a moment; the edit goes on.
  if (event->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
    leave_edit();
  return false;
}

void SheetView::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& data = *event->mimeData();
  const bool is_project = data.hasUrls() && data.urls().constFirst().toLocalFile().endsWith(
                                                QStringLiteral(".tavlo"), Qt::CaseInsensitive);
  if (holds_rows(data) && !is_project)
    event->acceptProposedAction();
  else
    event->ignore();  // the frame opens projects
}

void SheetView::dragMoveEvent(QDragMoveEvent* event) { event->acceptProposedAction(); }

// The source keeps its text: a drop is always a copy.
void SheetView::dropEvent(QDropEvent* event) {
  leave_edit();
  const QMimeData& dropped = *event->mimeData();
  const QModelIndex under = indexAt(event->position().toPoint());
  const QModelIndex cell = dropped.hasUrls() && under.isValid() ? under.siblingAtColumn(0) : under;
  if (cell.isValid()) setCurrentIndex(cell);
  setFocus();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  if (dropped.hasUrls())
    emit file_dropped(dropped.urls().constFirst().toLocalFile());
  else
    emit text_dropped(dropped.text());
}

void SheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  show_hint(current);
  if (current.isValid() && current.row() != previous.row())
    emit current_row_changed(model_.grid_row(current));
}

bool SheetView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::MouseMove)
    show_hint(indexAt(static_cast<QMouseEvent*>(event)->pos()));
  return QTableView::viewportEvent(event);
}

void SheetView::show_hint(const QModelIndex& index) {
  if (index.isValid()) emit hint_wanted(to_qt(DataSheet::hint(model_.grid_column(index))));
}

}  // namespace tavlo
