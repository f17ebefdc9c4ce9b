// RowForm: a new row of a library, a field below the other. What the present analysis gives is
// filled in; the rest is chosen or typed.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <functional>
#include <string>
#include <vector>

#include "actions/analysis_row.h"
#include "guidance/library.h"

namespace tavlo {

class RowForm : public QDialog {
  Q_OBJECT

 public:
  /// Takes the fields; true when they are kept and the form may close.
  using Keep = std::function<bool(const std::vector<std::string>&)>;
  using Copy = std::function<void(const std::vector<std::string>&)>;

  /// Shows the form over its parent. What was chosen is remembered in the library's columns.
  static void run(Library& library, const AnalysisRow& row, Keep keep, Copy copy, QWidget* parent);

  void accept() override;

 private:
  RowForm(Library& library, const AnalysisRow& row, Keep keep, Copy copy, QWidget* parent);
  QWidget* make_fields(const AnalysisRow& row);
  QWidget* make_field(std::size_t place, const std::string& value);
  QWidget* make_buttons();
  std::vector<std::string> fields() const;
  void remember_choices();

  Library& library_;
  Keep keep_;
  Copy copy_;
  std::vector<QWidget*> editors_;
};

}  // namespace tavlo
