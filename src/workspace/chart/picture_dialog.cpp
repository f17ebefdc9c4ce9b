#include "workspace/chart/picture_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <cmath>

namespace tavlo {

namespace {

constexpr int least_resolution = 36;
constexpr int most_resolution = 2400;

enum PaperUnit { paper_millimetre, paper_inch, paper_pixel };  // in the order of their box

void give_name(QWidget& widget, const char* object, const QString& words) {
  widget.setObjectName(QString::fromUtf8(object));
  widget.setAccessibleName(words);
}

}  // namespace

PictureDialog::PictureDialog(const SizeOnPaper& size, const QSizeF& on_screen, bool in_pixels,
                             QWidget* parent)
    : QDialog(parent), size_(size), names_(named_sizes(on_screen)), in_pixels_(in_pixels) {
  setWindowTitle(tr("Size of the Picture"));
  auto* rows = new QFormLayout(this);
  add_sizes();
  add_sides();
  add_resolution();
  give_name(outcome_, "lbl_Outcome", tr("Outcome"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
  save_ = buttons->button(QDialogButtonBox::Save);
  rows->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->insertRow(rows->rowCount() - 1, &outcome_);
  show_size();
  show_name();
}

void PictureDialog::add_sizes() {
  give_name(named_, "cbo_Size", tr("Size"));
  for (const NamedSize& each : names_) named_.addItem(each.name);
  named_.addItem(tr("Own size"));
  static_cast<QFormLayout*>(layout())->addRow(tr("&Size:"), &named_);
  connect(&named_, &QComboBox::activated, this, &PictureDialog::choose_named);
}

void PictureDialog::add_sides() {
  auto* sides = new QHBoxLayout;
  give_name(width_, "txt_Width", tr("Width"));
  give_name(height_, "txt_Height", tr("Height"));
  give_name(unit_, "cbo_Unit", tr("Unit"));
  unit_.addItems({tr("mm"), tr("inch"), tr("pixels")});
  for (QDoubleSpinBox* side : {&width_, &height_}) {
    side->setRange(0.01, 100000);
    side->setKeyboardTracking(false);
    connect(side, &QDoubleSpinBox::valueChanged, this, &PictureDialog::take_sides);
  }
  sides->addWidget(&width_, 1);
  sides->addWidget(new QLabel(QStringLiteral("x")));
  sides->addWidget(&height_, 1);
  sides->addWidget(&unit_);
  auto* caption = new QLabel(tr("&Width x height:"));
  caption->setBuddy(&width_);
  static_cast<QFormLayout*>(layout())->addRow(caption, sides);
  connect(&unit_, &QComboBox::currentIndexChanged, this, &PictureDialog::show_size);
}

/// A drawing of lines has no dots; its pixels are those of its size on paper.
void PictureDialog::add_resolution() {
  give_name(resolution_, "txt_Resolution", tr("Dots per inch"));
  resolution_.setRange(least_resolution, most_resolution);
  resolution_.setKeyboardTracking(false);
  resolution_.setToolTip(tr("Screens show 96, printers ask for 300 or 600"));
  resolution_.setValue(size_.dots_per_inch);
  connect(&resolution_, &QSpinBox::valueChanged, this, [this](int dots) {
    const bool keeps_pixels = unit_.currentIndex() == paper_pixel;
    const double factor = keeps_pixels ? static_cast<double>(size_.dots_per_inch) / dots : 1.0;
    size_ = {size_.width * factor, size_.height * factor, dots};
    show_size();
    show_name();
  });
  if (in_pixels_) static_cast<QFormLayout*>(layout())->addRow(tr("&Dots per inch:"), &resolution_);
}

/// Millimetres of one of the chosen units.
double PictureDialog::unit() const {
  switch (unit_.currentIndex()) {
    case paper_inch: return millimetres_per_inch;
    case paper_pixel: return millimetres_per_inch / size_.dots_per_inch;
    default: return 1;
  }
}

void PictureDialog::choose_named(int index) {
  if (index >= static_cast<int>(names_.size())) return;
  const NamedSize& chosen = names_[static_cast<std::size_t>(index)];
  size_.width = chosen.width;
  size_.height = chosen.height;
  show_size();
}

void PictureDialog::take_sides() {
  size_.width = width_.value() * unit();
  size_.height = height_.value() * unit();
  show_size();
  show_name();
}

void PictureDialog::show_size() {
  const QSignalBlocker quiet_width(width_), quiet_height(height_);
  const int decimals[] = {1, 2, 0};
  for (QDoubleSpinBox* side : {&width_, &height_})
    side->setDecimals(decimals[unit_.currentIndex()]);
  width_.setValue(size_.width / unit());
  height_.setValue(size_.height / unit());
  const PictureFormat format = format_of(size_);
  const QString refusal = size_refusal(size_);
  const QString outcome = tr("%1 x %2 pixels").arg(format.width).arg(format.height);
  outcome_.setText(!refusal.isEmpty() ? refusal
                                      : (in_pixels_ ? outcome : tr("Sharp at every size")));
  if (save_) save_->setEnabled(refusal.isEmpty());
}

/// The name of the size, if it has one.
void PictureDialog::show_name() {
  constexpr double tolerance = 0.06;  // millimetres
  int index = 0;
  for (const NamedSize& each : names_) {
    if (std::abs(each.width - size_.width) < tolerance &&
        std::abs(each.height - size_.height) < tolerance)
      break;
    ++index;
  }
  named_.setCurrentIndex(index);
}

}  // namespace tavlo
