// FormatDialog (frm_Format): how a chart looks, page by page, with a preview. It
// works on a copy; the chart changes when the person says OK.
#pragma once

#include <QDialog>
#include <QListWidget>
#include <QStackedWidget>
#include <QTimer>

#include "chart/compose/chart_parts.h"
#include "workspace/format/format_draft.h"
#include "workspace/format/format_page.h"
#include "workspace/format/format_preview.h"

namespace tavlo {

class FormatDialog : public QDialog {
  Q_OBJECT

 public:
  /// Opens the dialog for a chart on the page of one of its parts, over `parent`,
  /// which it holds until it is closed. Returns at once: each change in the dialog
  /// is a command of its own.
  static void run(Session& session, UserCommands& commands, int chart_index,
                  ChartPart part = ChartPart::boxes, QWidget* parent = nullptr);

  void accept() override;
  void reject() override;

 private:
  FormatDialog(Session& session, UserCommands& commands, int chart_index, QWidget* parent);
  void add_pages();
  void add_page(const QString& title, FormatPage* page);
  void add_page_keys();
  void lay_out();
  int page_width() const;
  void turn_page(int step);
  void show_all();
  void show_preview();
  void cmd_Save();
  bool has_valid_pages();

  FormatDraft draft_;
  QListWidget list_;
  QStackedWidget stack_;
  FormatPreview preview_;
  QTimer recompose_;
  std::vector<FormatPage*> pages_;
};

}  // namespace tavlo
