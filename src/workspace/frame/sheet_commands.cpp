#include "workspace/frame/sheet_commands.h"

#include <QKeyEvent>
#include <QMenu>

#include "actions/clipboard_text.h"
#include "actions/records.h"

namespace tavlo {

SheetCommands::SheetCommands(Program& program, ProjectWindows& windows)
    : program_(program), windows_(windows) {}

void SheetCommands::attach(int index) {
  SheetView& view = windows_.sheet(index);
  show_columns(view);
  connect(&view, &QObject::destroyed, this, [this, &view] { bars_.erase(&view); });
}

bool SheetCommands::has_rows() const { return any() && sheet().last_row() > 0; }

/// The block that the person has selected stays so.
void SheetCommands::change(const char* step,
                           const std::function<void(DataSheet&, const GridBlock&)>& act) {
  SheetView& view = windows_.sheet(index());
  view.mirror_selection();
  const GridBlock block = sheet().selection();
  act(sheet(), block);
  program_.session.step = step;
  view.refresh();
  view.select_block(block);
}

void SheetCommands::insert_rows() {
  change("Insert Rows", [this](DataSheet& sheet, const GridBlock& block) {
    if (!sheet.insert_rows(block))
      program_.session.ports.views.status("A sheet can't have so many rows.");
  });
}

void SheetCommands::delete_rows() {
  change("Delete Rows", [](DataSheet& sheet, const GridBlock& block) { sheet.delete_rows(block); });
}

void SheetCommands::fill_down() {
  change("Fill Down", [](DataSheet& sheet, const GridBlock& block) { sheet.fill_down(block); });
}

void SheetCommands::clear_cells() { windows_.sheet(index()).clear_selected(); }

void SheetCommands::sort(SortOrder order) {
  const int column = windows_.sheet(index()).current_cell().column;
  change("Sort", [&](DataSheet& sheet, const GridBlock&) { sheet.sort_by(column, order); });
  program_.session.ports.views.status(
      std::string("Sorted by ") + DataSheet::heading(column) +
      (order == SortOrder::ascending ? ", ascending" : ", descending"));
}

void SheetCommands::copy_with_headings() {
  windows_.sheet(index()).mirror_selection();
  copy_table(program_.session, index());
}

void SheetCommands::toggle_left_out() {
  const bool is_out = !is_left_out();
  change(is_out ? "Leave Out" : "Take In", [&](DataSheet& sheet, const GridBlock& block) {
    sheet.leave_out(block, is_out);
    const int rows = sheet.left_out_rows();
    program_.session.ports.views.status(rows == 0 ? "All rows are in the analysis"
                                                  : std::to_string(rows) +
                                                        (rows == 1 ? " row is" : " rows are") +
                                                        " left out of the analysis");
  });
}

bool SheetCommands::is_left_out() const {
  return any() && sheet().is_left_out(windows_.sheet(index()).selected_block());
}

SheetFind& SheetCommands::find_bar() {
  SheetView& view = windows_.sheet(index());
  SheetFind*& bar = bars_[&view];
  if (!bar) {
    bar = new SheetFind(view, program_.commands);
    windows_.child({Block::sheet, index()})->add_bar(bar);
  }
  return *bar;
}

void SheetCommands::open_find() { find_bar().open({}); }

void SheetCommands::find_again(SearchWay way) { find_bar().find(way); }

void SheetCommands::describe() {
  Session& session = program_.session;
  const auto title = session.ports.prompts.ask_line(
      "Description", "Title of the data set:", session.project.data(index()).Title);
  if (title && !rename_data(session, index(), *title))
    session.ports.views.status("A data set needs a title.");
}

bool SheetCommands::may_hide(int column) const {
  for (int other = sheet_column::x; other < sheet_column::count; ++other)
    if (other != column && shows(other)) return true;
  return false;
}

void SheetCommands::toggle_column(int column) {
  bool& hidden = hidden_[static_cast<std::size_t>(column)];
  hidden = !hidden && may_hide(column);
  for (int i = 1; i <= program_.session.project.data.bound(); ++i)
    if (windows_.child({Block::sheet, i})) show_columns(windows_.sheet(i));
}

void SheetCommands::show_columns(SheetView& view) const {
  for (int column = sheet_column::x; column < sheet_column::count; ++column)
    view.show_column(column, shows(column));
}

bool SheetCommands::eventFilter(QObject* watched, QEvent* event) {
  auto* const menu = qobject_cast<QMenu*>(watched);
  QAction* const entry = menu ? menu->activeAction() : nullptr;
  if (!entry || !entry->isCheckable() || !entry->isEnabled()) return false;
  const bool is_key = event->type() == QEvent::KeyPress;
  const int key = is_key ? static_cast<QKeyEvent*>(event)->key() : 0;
  const bool ticks = event->type() == QEvent::MouseButtonRelease || key == Qt::Key_Space ||
                     key == Qt::Key_Return || key == Qt::Key_Enter;
  if (ticks) entry->trigger();
  return ticks;
}

QVariantList SheetCommands::hidden_columns() const {
  QVariantList columns;
  for (int column = sheet_column::x; column < sheet_column::count; ++column)
    if (!shows(column)) columns.push_back(column);
  return columns;
}

void SheetCommands::hide_columns(const QVariantList& columns) {
  for (const QVariant& each : columns)
    if (const int column = each.toInt();
        column >= sheet_column::x && column < sheet_column::count && shows(column))
      toggle_column(column);
}

}  // namespace tavlo
