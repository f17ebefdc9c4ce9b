// FormatPage: one page of the format dialog, built as a table: groups of rows, each
// row a caption and the editors of its fields.
#pragma once

#include <QFormLayout>
#include <QVBoxLayout>
#include <QWidget>
#include <vector>

#include "workspace/format/format_fields.h"

namespace tavlo {

/// An item of `Boxes`.
At<ChartItem> box_item(int index);

class FormatPage : public QWidget {
  Q_OBJECT

 public:
  explicit FormatPage(FormatDraft& draft);

  /// Shows the working copy in all fields.
  virtual void show_chart();

  /// The working copy has been composed: what follows from it is shown.
  virtual void composed() {}

  /// The first field that holds what it can't be; null when all is well.
  virtual QWidget* invalid_field();

 protected:
  FormatDraft& draft() { return draft_; }

  void add_group(const QString& title);
  /// The caption's key leads to the first of the widgets.
  void add_row(const QString& caption, const std::vector<QWidget*>& widgets);
  void end_rows() { groups_->addStretch(1); }

  // Editors, each with its name as a widget.
  QWidget* text(const QString& name, Field<std::string> field);
  QWidget* number(const QString& name, Field<double> field, NumberRange range);
  QWidget* check(const QString& name, const QString& caption, Field<bool> field);
  QWidget* choice(const QString& name, Field<int> field, const std::vector<Choice>& choices);
  QWidget* listed_text(const QString& name, Field<std::string> field, const QStringList& usual);
  QWidget* colour(const QString& name, Field<std::int32_t> field);
  QWidget* pen(const QString& name, Field<PenLook> field);

  /// Keeps an editor whose widget gets that name; for editors of other kinds.
  template <class Editor>
  Editor& keep(const QString& name, Editor* editor) {
    editor->setParent(this);
    editor->widget()->setObjectName(name);
    editors_.push_back(editor);
    return *editor;
  }

  // Rows that several pages have; `name` begins the names of their widgets.
  void add_font_row(const QString& name, At<ChartItem> item);
  void add_font_row(const QString& name, At<ChartItem> item, Field<std::int32_t> text_colour);
  void add_background_row(const QString& name, At<ChartItem> item, Field<std::int32_t> fill_colour);
  void add_place_row(const QString& caption, const QString& name, At<ChartItem> item);
  void add_size_row(const QString& caption, const QString& name, At<ChartItem> item);

 private:
  QWidget* font_style(const QString& name, const QString& words, bool ChartItem::*style,
                      At<ChartItem> item);

  FormatDraft& draft_;
  std::vector<FieldEditor*> editors_;
  QVBoxLayout* groups_;
  QFormLayout* rows_ = nullptr;
};

}  // namespace tavlo
