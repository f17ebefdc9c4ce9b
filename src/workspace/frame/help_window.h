// HelpWindow: the manual in a window of its own: contents at the left, the page at the right,
// and above them the way back and a search through all pages.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>

#include "workspace/frame/manual.h"

namespace tavlo {

/// Reads the pages from the program itself, never from elsewhere.
class ManualBrowser : public QTextBrowser {
 public:
  explicit ManualBrowser(std::vector<ManualPage> pages) : pages_(std::move(pages)) {}
  QVariant loadResource(int type, const QUrl& name) override;
  const std::vector<ManualPage>& pages() const { return pages_; }

 private:
  std::vector<ManualPage> pages_;
};

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(std::vector<ManualPage> pages);

  /// Shows the page of that key in front; the contents for one that there is not.
  void show_page(const QString& key);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* make_top();
  void lay_out();
  int page() const;
  int row_of(const QUrl& url) const;
  void open(int page);
  void follow_page(const QUrl& url);
  void search();
  void go_on(bool forward);
  void mark_found();

  ManualBrowser browser_;
  QListWidget contents_;
  QLineEdit words_;
  QLabel found_;
};

}  // namespace tavlo
