// SheetFind: the bar above a sheet in which a person types what to look for, in all shown
// columns from the current cell on, round the end.
#pragma once

#include "workspace/data/sheet_search.h"
#include "workspace/data/sheet_view.h"
#include "workspace/qt/find_bar.h"

namespace tavlo {

class SheetFind : public FindBar {
  Q_OBJECT

 public:
  SheetFind(SheetView& view, UserCommands& commands);

  /// Goes to the next cell, or opens the bar when there is nothing to look for.
  void find(SearchWay way);

 private:
  void show_found(std::optional<CellPlace> found, CellPlace from, SearchWay way);

  SheetView& view_;
  UserCommands& commands_;
};

}  // namespace tavlo
