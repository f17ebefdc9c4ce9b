#include "workspace/data/sheet_find.h"

namespace tavlo {

SheetFind::SheetFind(SheetView& view, UserCommands& commands)
    : FindBar(tr("Find in the sheet"), &view), view_(view), commands_(commands) {
  connect(this, &FindBar::changed, this, [this] { tell({}); });
  connect(this, &FindBar::next, this, [this] { find(SearchWay::forward); });
  connect(this, &FindBar::previous, this, [this] { find(SearchWay::backward); });
  connect(this, &FindBar::closed, this, [this] {
    hide();
    view_.setFocus();
  });
}

void SheetFind::find(SearchWay way) {
  if (wanted().isEmpty()) return open({});
  commands_.run([&] {
    const CellPlace from = view_.current_cell();
    show_found(find_cell(view_.sheet(), view_.shown_columns(), wanted(), from, way), from, way);
  });
}

void SheetFind::show_found(std::optional<CellPlace> found, CellPlace from, SearchWay way) {
  if (!found) return tell(tr("Not found"));
  view_.go_to_cell(found->row, found->column);
  const auto place = [](CellPlace cell) { return std::pair(cell.row, cell.column); };
  const bool forward = way == SearchWay::forward;
  if (*found == from)
    tell(tr("The only one"));
  else if (forward == (place(*found) < place(from)))
    tell(forward ? tr("From the top") : tr("From the end"));
  else
    tell({});
}

}  // namespace tavlo
