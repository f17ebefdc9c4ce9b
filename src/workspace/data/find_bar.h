// FindBar: the line above a sheet in which a person types what to look for. Enter and F3 go to
// the next cell that has it, with Shift to the one before; Escape closes the bar.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "workspace/data/sheet_search.h"
#include "workspace/data/sheet_view.h"

namespace tavlo {

class FindBar : public QWidget {
  Q_OBJECT

 public:
  FindBar(SheetView& view, UserCommands& commands);

  /// Comes into view with the keyboard; what was looked for last stands there.
  void open();

  /// Goes to the next cell, or opens the bar when there is nothing to look for.
  void find(SearchWay way);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void add_controls();
  void close_bar();
  void show_found(std::optional<CellPlace> found, CellPlace from, SearchWay way);

  SheetView& view_;
  UserCommands& commands_;
  QLineEdit text_;
  QLabel answer_;
};

}  // namespace tavlo
