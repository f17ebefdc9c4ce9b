#include "workspace/guidance/example_picture.h"

#include <QPainter>

#include "actions/example_chart.h"
#include "painter/player.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

void ExamplePicture::show_example(std::size_t place) {
  const WizardExample& example = wizard_examples()[place];
  setAccessibleName(tr("Example chart: %1").arg(to_qt(example.tab)));
  setAccessibleDescription(to_qt(example.note));
  if (place == place_ && drawing_) return;
  place_ = place;
  drawing_.reset();
  update();
}

void ExamplePicture::paintEvent(QPaintEvent*) {
  if (!drawing_) drawing_ = example_chart(session_, wizard_examples()[place_]);
  if (drawing_->width <= 0 || drawing_->height <= 0) return;
  const QSizeF size =
      QSizeF(drawing_->width, drawing_->height).scaled(this->size(), Qt::KeepAspectRatio);
  QPainter painter(this);
  PlayChart(painter, *drawing_,
            QRectF(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

}  // namespace tavlo
