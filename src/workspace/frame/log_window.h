// LogWindow: shows the project's log as the document that it is, which the person may edit,
// search and give other letters. New entries reach it only from the core, and go to its end.
#pragma once

#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <optional>
#include <vector>

#include "ports/clipboard.h"
#include "project/rich_text.h"
#include "workspace/qt/find_bar.h"
#include "workspace/qt/shown_rich_text.h"

namespace tavlo {

class LogWindow : public QTextEdit {
  Q_OBJECT

 public:
  explicit LogWindow(const RichText& log, QWidget* parent = nullptr);

  /// Shows what the log has got since the last time, or has lost again, and scrolls to its
  /// end. Many changes at a time are shown a few times a second.
  void refresh();

  /// Hands on what the person has typed: from here on it is the log.
  void end_edit();

  /// The selected part in all forms; empty where nothing is.
  ClipboardText selected();

  /// Puts a text in the place of what is selected, in its own letters.
  void insert(const RichText& text);

  /// Asks for letters and gives them to what is selected, or to what is typed next.
  void choose_font();

  void open_search();

 signals:
  /// The person has edited the log, which is to be this.
  void edited(const RichText& log);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void connect_search();
  void reveal(std::size_t place);
  void show_earlier();
  void show_later();
  bool go_to_end_of_all(QKeyEvent& key);
  struct HiddenPart;
  std::vector<HiddenPart> hidden_parts(bool forward) const;
  std::optional<HiddenPart> hidden_with_wanted(bool forward) const;
  QTextCursor found_from(const QTextCursor& from, bool forward) const;
  void close_search();
  void search(bool forward, bool from_here);
  void place_bars();
  void show_changes();

  const RichText& log_;
  ShownRichText shown_;
  FindBar search_;
  QPushButton earlier_;  ///< what of a very long log is not in the document
  QPushButton later_;
  QTimer pause_;
  QTimer rest_;  ///< of the hands: what was typed until then is one step
};

}  // namespace tavlo
