// CommandRegistry: all that a person can ask the program for, once. Menus, pop-ups, tool bars
// and the keyboard show and run the same entry; why it can't be done now and whether it bears
// a check mark is asked of the entry, never set from elsewhere.
#pragma once

#include <QAction>
#include <QKeyEvent>
#include <QMenuBar>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace tavlo {

/// Where the keys of a command are heard.
enum class CommandReach { frame, chart, fits, tree, sheet };

/// Where a command stands and what it is called.
struct CommandEntry {
  int id = 0;                ///< 0 is a separator
  std::string menu = {};     ///< path in the menu bar, "&File|&New"; empty: none
  std::string caption = {};  ///< with its mnemonic
  std::string keys = {};     ///< "F6; Ctrl+Tab"
  std::string icon = {};
};

/// Why a command can't be done now, as a sentence for the person; empty when it can.
using Reason = std::function<std::string()>;

/// Refuses for that reason unless the test holds.
Reason unless(std::function<bool()> holds, std::string reason);

/// Refuses always: what the program has not got yet.
Reason always(std::string reason);

struct CommandEffect {
  std::string name = {};                     ///< of the action, behind "mnu_"; empty: its number
  std::function<void()> run = {};            ///< empty: not there yet, and refused
  Reason refusal = {};                       ///< empty: it can always be done
  std::function<bool()> checked = {};        ///< empty: bears no mark
  std::function<std::string()> object = {};  ///< stands behind the caption: "Undo Paste"
  CommandReach reach = CommandReach::frame;
};

struct Command : CommandEntry, CommandEffect {
  Command(CommandEntry entry, CommandEffect effect = {})
      : CommandEntry(std::move(entry)), CommandEffect(std::move(effect)) {}
};

class CommandRegistry {
 public:
  /// Fills the menu bar, in the order of the commands. `perform` carries out the command of
  /// a number, `menu_title` gives the title of the menu of a path. Menus and actions belong
  /// to the bar.
  CommandRegistry(QMenuBar& bar, std::vector<Command> commands,
                  const std::function<void(int)>& perform,
                  std::function<QString(const QString&)> menu_title);

  /// The command of a number that can be run now, or null.
  const Command* ready(int id) const;

  /// The action of a command; throws for a number without one.
  QAction& action(int id) const { return *actions_.at(id); }

  /// The menu of a path as "&Analysis" or "&File|&New"; made if need be.
  QMenu& menu(const QString& path);

  /// Adds the commands to a pop-up or a tool bar; 0 is a separator.
  void fill(QWidget& place, std::span<const int> ids) const;

  /// Lets the widget hear the keys of that reach.
  void give_keys(QWidget& widget, CommandReach reach) const;

  /// Why the command of a key that `at` has heard in vain can't be done; empty where no command
  /// has that key there.
  QString refusal_of_key(const QKeyEvent& key, const QWidget* at) const;

  /// Asks every command anew whether it can be done and is checked. One that can't is grey,
  /// and its tool tip and status text say why.
  void refresh();

 private:
  void add(const Command& command, const std::function<void(int)>& perform);
  void refresh_entry(const Command& command);
  void disable_dead_menus();

  QMenuBar& bar_;
  std::vector<Command> commands_;
  std::function<QString(const QString&)> menu_title_;
  std::map<QString, QMenu*> menus_;
  std::map<int, QAction*> actions_;
};

}  // namespace tavlo
