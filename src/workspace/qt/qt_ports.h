// Qt ports: what the core asks of the world, answered by Qt. Clock, entropy, files and
// the host need no Qt and come from the floor below.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

#include "numerics/number_reading.h"
#include "ports/clipboard.h"
#include "ports/event_loop.h"
#include "ports/prompts.h"
#include "workspace/qt/box_folding.h"

namespace tavlo {

/// 1234.567 with two decimals, and -0.5, as the desktop writes them.
std::string system_grouped_number();
std::string system_half();

/// The number punctuation of the desktop; a full stop where that can't be told.
NumberPunctuation system_punctuation();

/// Modal boxes over the main window. Long runs of equal boxes are folded, see
/// BoxFolding; `end_command` shows what was folded.
class QtPrompts : public Prompts {
 public:
  void set_parent(QWidget* parent) { parent_ = parent; }
  void end_command();

  BoxAnswer show(const Box& box) override;
  std::optional<std::string> ask_line(const std::string& title, const std::string& text,
                                      const std::string& suggestion) override;
  std::optional<std::string> choose_file(const FileRequest& request) override;

 private:
  BoxAnswer show_now(const Box& box);
  QWidget* owner() const;

  QPointer<QWidget> parent_;
  BoxFolding folding_;
};

/// Turns the event loop at most every 15 ms; between two turns a call costs a
/// count.
class QtEventLoop : public EventLoop {
 public:
  QtEventLoop() { since_last_turn_.start(); }
  void yield() override;

 private:
  unsigned calls_ = 0;
  QElapsedTimer since_last_turn_;
};

class QtClipboard : public Clipboard {
 public:
  std::string text() override;
  bool is_too_long() override;
  ClipboardText rich_text() override;
  bool holds_only_picture() override;
  void set_text(const ClipboardText& text) override;
  bool set_picture(const std::vector<ClipboardForm>& forms) override;
};

}  // namespace tavlo
