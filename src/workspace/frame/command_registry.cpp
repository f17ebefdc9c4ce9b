#include "workspace/frame/command_registry.h"

#include <algorithm>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

QString action_name(const Command& command) {
  return QStringLiteral("mnu_") +
         (command.name.empty() ? QString::number(command.id) : to_qt(command.name));
}

/// An entry that can be used needs no tool tip beside its caption.
void show_reason(QAction& action, const std::string& reason) {
  action.setToolTip(to_qt(reason));
  action.setStatusTip(to_qt(reason));
}

std::string refusal_of(const Command& command) {
  std::string reason = command.refusal ? command.refusal() : std::string();
  return reason.empty() && !command.run ? "The program can't do this yet." : reason;
}

}  // namespace

Reason unless(std::function<bool()> holds, std::string reason) {
  return [holds = std::move(holds), reason = std::move(reason)] {
    return holds() ? std::string() : reason;
  };
}

Reason always(std::string reason) {
  return [reason = std::move(reason)] { return reason; };
}

CommandRegistry::CommandRegistry(QMenuBar& bar, std::vector<Command> commands,
                                 const std::function<void(int)>& perform,
                                 std::function<QString(const QString&)> menu_title)
    : bar_(bar), commands_(std::move(commands)), menu_title_(std::move(menu_title)) {
  for (const Command& command : commands_) {
    if (command.id != 0) {
      add(command, perform);
    } else {
      menu(to_qt(command.menu)).addSeparator();
    }
  }
  disable_dead_menus();
}

void CommandRegistry::add(const Command& command, const std::function<void(int)>& perform) {
  auto* action = new QAction(to_qt(command.caption), &bar_);
  action->setObjectName(action_name(command));
  if (!command.keys.empty())
    action->setShortcuts(
        QKeySequence::listFromString(to_qt(command.keys), QKeySequence::PortableText));
  if (command.reach != CommandReach::frame) action->setShortcutContext(Qt::WidgetShortcut);
  if (!command.icon.empty()) action->setIcon(icon(to_qt(command.icon)));
  action->setCheckable(static_cast<bool>(command.checked));
  action->setEnabled(static_cast<bool>(command.run));
  if (!command.run) show_reason(*action, refusal_of(command));
  QObject::connect(action, &QAction::triggered, [perform, id = command.id] { perform(id); });
  if (!command.menu.empty())
    menu(to_qt(command.menu)).addAction(action);
  else if (command.reach == CommandReach::frame && !command.keys.empty())
    bar_.parentWidget()->addAction(action);  // no menu owns its key
  actions_[command.id] = action;
}

const Command* CommandRegistry::ready(int id) const {
  const auto found = std::find_if(commands_.begin(), commands_.end(),
                                  [id](const Command& each) { return each.id == id; });
  return id == 0 || found == commands_.end() || !refusal_of(*found).empty() ? nullptr : &*found;
}

QMenu& CommandRegistry::menu(const QString& path) {
  QMenu*& found = menus_[path];
  if (found) return *found;
  const auto cut = path.lastIndexOf(u'|');
  const QString title = menu_title_(path);
  found = cut < 0 ? bar_.addMenu(title) : menu(path.left(cut)).addMenu(title);
  found->setToolTipsVisible(true);
  return *found;
}

void CommandRegistry::fill(QWidget& place, std::span<const int> ids) const {
  for (const int id : ids) {
    QAction* entry = id != 0 ? &action(id) : new QAction(&place);
    if (id == 0) entry->setSeparator(true);
    place.addAction(entry);
  }
}

void CommandRegistry::give_keys(QWidget& widget, CommandReach reach) const {
  for (const Command& command : commands_)
    if (command.id != 0 && command.reach == reach) widget.addAction(&action(command.id));
}

QString CommandRegistry::refusal_of_key(const QKeyEvent& key, const QWidget* at) const {
  const QKeySequence pressed(key.keyCombination());
  for (const auto& [id, action] : actions_) {
    const bool is_heard =
        action->shortcutContext() != Qt::WidgetShortcut || (at && at->actions().contains(action));
    if (is_heard && !action->isEnabled() && action->shortcuts().contains(pressed))
      return action->toolTip();
  }
  return {};
}

void CommandRegistry::refresh() {
  for (const Command& command : commands_)
    if (command.id != 0) refresh_entry(command);
}

void CommandRegistry::refresh_entry(const Command& command) {
  QAction& entry = action(command.id);
  const std::string reason = refusal_of(command);
  entry.setEnabled(reason.empty());
  show_reason(entry, reason);
  if (command.checked) entry.setChecked(command.checked());
  if (command.object)
    entry.setText(to_qt(command.caption + (entry.isEnabled() ? " " + command.object() : "")));
}

// A submenu that leads nowhere would only waste a step of the keyboard.
void CommandRegistry::disable_dead_menus() {
  for (const auto& [path, each] : menus_) {
    const auto entries = each->actions();
    const bool alive = std::any_of(entries.begin(), entries.end(),
                                   [](const QAction* entry) { return entry->isEnabled(); });
    if (alive || !path.contains(u'|')) continue;
    each->menuAction()->setEnabled(false);
    if (!entries.isEmpty()) each->menuAction()->setToolTip(entries.first()->toolTip());
  }
}

}  // namespace tavlo
