// Mark dialog: text, font, pen and symbol of one of the user's marks on a chart.
#pragma once

#include <QDialog>
#include <QFormLayout>
#include <memory>
#include <vector>

#include "workspace/format/format_fields.h"

namespace tavlo {

class MarkDialog : public QDialog {
  Q_OBJECT

 public:
  MarkDialog(QWidget* parent, Session& session, UserCommands& commands, int chart_index, int mark);

  /// The mark changes when the person says OK.
  void accept() override;

 private:
  ChartItem& mark() { return draft_.chart().Texts(mark_); }
  At<ChartItem> place() const;
  void add(const QString& caption, const QString& name, std::unique_ptr<FieldEditor> editor);
  void add_text();
  void add_pen();
  void add_heads();
  void add_symbol();

  FormatDraft draft_;
  int mark_;
  QFormLayout* rows_;
  std::vector<std::unique_ptr<FieldEditor>> editors_;
};

}  // namespace tavlo
