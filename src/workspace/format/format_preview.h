// FormatPreview: shows how the chart would look.
#pragma once

#include <QWidget>

#include "workspace/format/format_draft.h"

namespace tavlo {

class FormatPreview : public QWidget {
  Q_OBJECT

 public:
  explicit FormatPreview(FormatDraft& draft);

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override { return {560, 336}; }
  QSize minimumSizeHint() const override { return {160, 96}; }

 private:
  FormatDraft& draft_;
};

}  // namespace tavlo
