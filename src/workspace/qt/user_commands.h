// UserCommands: the one handler in which every slot ends. A command is what the
// program does in answer to one key, click or menu entry; commands may nest
// when the event loop turns inside one.
#pragma once

#include <QObject>
#include <deque>
#include <functional>

#include "workspace/qt/qt_ports.h"

namespace tavlo {

class UserCommands : public QObject {
  Q_OBJECT

 public:
  explicit UserCommands(QtPrompts& prompts) : prompts_(prompts) {}

  /// Runs the action. An exception ends it with a box, never the program. When
  /// the outermost command is over, `finished` lets the windows catch up.
  void run(const std::function<void()>& action);

  /// Runs what no key or click asked for, as a timer's call: an exception ends it in a box
  /// too, but it is no command, and the windows don't catch up.
  void run_aside(const std::function<void()>& action) { attempt(action); }

  /// Runs the action as a command when the one at work is over, and the event that began it:
  /// windows may go in it. An open dialog of a command is waited for.
  void run_later(std::function<void()> action);

  /// Nothing of what waits is run any more.
  void drop_later() { later_.clear(); }

  bool running() const { return depth_ > 0; }

  /// The same as a slot: connect(button, &QAbstractButton::clicked, this,
  /// commands.slot([this] { ... })).
  std::function<void()> slot(std::function<void()> action) {
    return [this, action = std::move(action)] { run(action); };
  }

 signals:
  void finished();

 private:
  void attempt(const std::function<void()>& action);
  void run_next();

  QtPrompts& prompts_;
  std::deque<std::function<void()>> later_;
  int depth_ = 0;
};

}  // namespace tavlo
