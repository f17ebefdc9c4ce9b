// ExamplePicture: a chart of an example, sharp at any size, drawn when it is first seen.
#pragma once

#include <QWidget>
#include <optional>

#include "chart/record/drawing_record.h"
#include "guidance/wizard_examples.h"
#include "project/session.h"

namespace tavlo {

class ExamplePicture : public QWidget {
  Q_OBJECT

 public:
  explicit ExamplePicture(const Session& session) : session_(session) {}

  /// Shows the example of that place in wizard_examples().
  void show_example(std::size_t place);

  QSize sizeHint() const override { return {480, 300}; }
  QSize minimumSizeHint() const override { return {160, 100}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Session& session_;
  std::size_t place_ = 0;
  std::optional<DrawingRecord> drawing_;
};

}  // namespace tavlo
