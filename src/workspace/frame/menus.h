// Menus: the menu bar built from the command table.
#pragma once

#include <QAction>
#include <QMenuBar>
#include <functional>
#include <map>

namespace tavlo {

class Menus {
 public:
  /// Fills the bar. `has_action` tells which commands do something, `perform`
  /// carries one out. Menus and actions belong to the bar.
  Menus(QMenuBar& bar, const std::function<bool(int)>& has_action,
        const std::function<void(int)>& perform);

  /// The menu of a path as "&Analysis" or "&File|&New"; made if need be.
  QMenu& menu(const QString& path);

  /// The action of a command; null for a number without a menu entry.
  QAction* action(int id) const;

 private:
  void disable_dead_menus(QMenu& menu);

  QMenuBar& bar_;
  std::map<QString, QMenu*> menus_;
  std::map<int, QAction*> actions_;
};

}  // namespace tavlo
