// HelpDesk: opens the manual at the page of what a person has before them: of the window in
// front, and by F1 of the dialog that is open.
#pragma once

#include <QObject>
#include <memory>

#include "workspace/frame/help_window.h"
#include "workspace/frame/window_key.h"

namespace tavlo {

class HelpDesk : public QObject {
  Q_OBJECT

 public:
  /// `keyboard` gives the page of the keyboard when the manual is first opened.
  explicit HelpDesk(std::function<QString()> keyboard);

  void show_page(const QString& key);
  void close();

  /// The page about a kind of window.
  static QString page_of(Block block);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<QString()> keyboard_;
  std::unique_ptr<HelpWindow> window_;
};

}  // namespace tavlo
