// Format fields: the editors of the format dialog. Each shows one value of the
// working copy and writes it back at every change by the person. What it edits
// says a Field, so that one editor serves every record.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

#include "workspace/format/format_draft.h"
#include "workspace/format/pen_look.h"
#include "workspace/format/picture_choice.h"

namespace tavlo {

/// A value in a chart.
template <class Value>
struct Field {
  std::function<Value(Chart&)> get;
  std::function<void(Chart&, Value)> set;
};

/// Where a record stands in a chart.
template <class Record>
using At = std::function<Record&(Chart&)>;

/// A member of a record as a field; numbers of all kinds are edited as double and
/// have been held within the range of their member.
template <class Record, class Number>
Field<double> number_field(At<Record> at, Number Record::*member) {
  return {[=](Chart& chart) { return static_cast<double>(at(chart).*member); },
          [=](Chart& chart, double value) { at(chart).*member = static_cast<Number>(value); }};
}

template <class Record>
Field<std::string> text_field(At<Record> at, std::string Record::*member) {
  return {[=](Chart& chart) { return at(chart).*member; },
          [=](Chart& chart, std::string value) { at(chart).*member = std::move(value); }};
}

/// A member that counts as a switch (on when not 0) or as one of several numbers.
template <class Value, class Record, class Member>
Field<Value> plain_field(At<Record> at, Member Record::*member) {
  return {[=](Chart& chart) { return static_cast<Value>(at(chart).*member); },
          [=](Chart& chart, Value value) { at(chart).*member = static_cast<Member>(value); }};
}

template <class Record>
Field<PenLook> pen_field(At<Record> at, std::int32_t Record::*colour, std::int32_t Record::*style,
                         std::int32_t Record::*width) {
  return {[=](Chart& chart) {
            const Record& record = at(chart);
            return PenLook{record.*colour, record.*style, record.*width};
          },
          [=](Chart& chart, const PenLook& pen) {
            Record& record = at(chart);
            record.*colour = pen.colour;
            record.*style = pen.style;
            record.*width = pen.width;
          }};
}

class FieldEditor : public QObject {
  Q_OBJECT

 public:
  explicit FieldEditor(FormatDraft& draft) : draft_(draft) {}

  virtual QWidget* widget() = 0;

  /// Shows the value of the working copy.
  virtual void show() = 0;

  /// False while the person has typed something that the field can't be.
  virtual bool is_valid() const { return true; }

 protected:
  FormatDraft& draft_;
};

class TextEditor : public FieldEditor {
 public:
  TextEditor(FormatDraft& draft, Field<std::string> field);
  QWidget* widget() override { return line_; }
  QLineEdit& line() { return *line_; }
  void show() override;

 private:
  Field<std::string> field_;
  QLineEdit* line_;
};

struct NumberRange {
  double low = 0;
  double high = 0;
  bool whole = true;
};

/// A number that isn't one, or is out of range, is marked and not written back.
class NumberEditor : public FieldEditor {
 public:
  NumberEditor(FormatDraft& draft, Field<double> field, std::function<bool(double)> is_possible);
  NumberEditor(FormatDraft& draft, Field<double> field, NumberRange range);
  QWidget* widget() override { return line_; }
  void show() override;
  bool is_valid() const override { return valid_ || !line_->isEnabled(); }

 private:
  void take(const QString& text);
  void mark(bool valid);

  Field<double> field_;
  std::function<bool(double)> is_possible_;
  QLineEdit* line_;
  bool valid_ = true;
};

class CheckEditor : public FieldEditor {
 public:
  /// `button` is checkable and becomes the editor's widget.
  CheckEditor(FormatDraft& draft, Field<bool> field, QAbstractButton* button);
  QWidget* widget() override { return button_; }
  void show() override { button_->setChecked(field_.get(draft_.chart())); }

 private:
  Field<bool> field_;
  QAbstractButton* button_;
};

struct Choice {
  int value = 0;
  QString text;
  QIcon picture = {};
};

class ChoiceEditor : public FieldEditor {
 public:
  ChoiceEditor(FormatDraft& draft, Field<int> field, const std::vector<Choice>& choices);
  QWidget* widget() override { return box_; }
  void set_choices(const std::vector<Choice>& choices);

  /// Nothing is chosen when the value is none of the choices.
  void show() override { box_->setCurrentIndex(box_->findData(field_.get(draft_.chart()))); }

 private:
  Field<int> field_;
  QComboBox* box_;
};

/// A text that is usually one of a list.
class ListedTextEditor : public FieldEditor {
 public:
  ListedTextEditor(FormatDraft& draft, Field<std::string> field, const QStringList& usual);
  QWidget* widget() override { return box_; }
  QLineEdit& line() { return *box_->lineEdit(); }
  void show() override;

 private:
  void take(const QString& text);

  Field<std::string> field_;
  QComboBox* box_;
};

/// A button that shows a colour and opens the dialog for it.
class ColourEditor : public FieldEditor {
 public:
  ColourEditor(FormatDraft& draft, Field<std::int32_t> field);
  QWidget* widget() override { return button_; }
  void show() override;

 private:
  void choose();

  Field<std::int32_t> field_;
  QPushButton* button_;
};

/// The same for a pen.
class PenEditor : public FieldEditor {
 public:
  PenEditor(FormatDraft& draft, Field<PenLook> field);
  QWidget* widget() override { return button_; }
  void show() override;

 private:
  void choose();

  Field<PenLook> field_;
  QPushButton* button_;
};

/// One of the 27 symbols.
class SymbolEditor : public FieldEditor {
 public:
  SymbolEditor(FormatDraft& draft, Field<int> field, const QString& name);
  QWidget* widget() override { return pictures_; }
  void show() override { pictures_->set_value(field_.get(draft_.chart())); }

 private:
  Field<int> field_;
  PictureChoice* pictures_;
};

/// A list that opens with the arrow keys and lets the wheel scroll the page.
QComboBox* make_list(bool editable);

}  // namespace tavlo
