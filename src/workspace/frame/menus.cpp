#include "workspace/frame/menus.h"

#include <algorithm>

#include "workspace/frame/command_table.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

Menus::Menus(QMenuBar& bar, const std::function<bool(int)>& has_action,
             const std::function<void(int)>& perform)
    : bar_(bar) {
  for (const MenuEntry& entry : menu_entries()) {
    QMenu& target = menu(to_qt(entry.menu));
    if (entry.id == command::separator) {
      target.addSeparator();
      continue;
    }
    QAction* action = target.addAction(to_qt(entry.caption));
    action->setObjectName(QStringLiteral("mnu_%1").arg(entry.id));
    action->setShortcut(QKeySequence(to_qt(entry.keys)));
    action->setEnabled(has_action(entry.id));
    QObject::connect(action, &QAction::triggered, [perform, id = entry.id] { perform(id); });
    actions_[entry.id] = action;
  }
  for (const auto& [path, each] : menus_)
    if (path.contains(u'|')) disable_dead_menus(*each);
}

QMenu& Menus::menu(const QString& path) {
  QMenu*& found = menus_[path];
  if (found) return *found;
  const auto cut = path.lastIndexOf(u'|');
  const QString title = path.mid(cut + 1);
  found = cut < 0 ? bar_.addMenu(title) : menu(path.left(cut)).addMenu(title);
  return *found;
}

QAction* Menus::action(int id) const {
  const auto found = actions_.find(id);
  return found == actions_.end() ? nullptr : found->second;
}

// A submenu that leads nowhere would only waste a step of the keyboard.
void Menus::disable_dead_menus(QMenu& menu) {
  const auto entries = menu.actions();
  const bool alive = std::any_of(entries.begin(), entries.end(),
                                 [](const QAction* action) { return action->isEnabled(); });
  menu.menuAction()->setEnabled(alive);
}

}  // namespace tavlo
