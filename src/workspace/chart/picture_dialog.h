// Picture dialog: asks how large a chart is to be in a picture file, in millimetres, inches
// or pixels, and with how many dots per inch.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "workspace/chart/picture_size.h"

namespace tavlo {

class PictureDialog : public QDialog {
  Q_OBJECT

 public:
  /// `in_pixels` is a picture of pixels, whose resolution is asked for too.
  PictureDialog(const SizeOnPaper& size, const QSizeF& on_screen, bool in_pixels, QWidget* parent);

  const SizeOnPaper& size() const { return size_; }

 private:
  void add_sizes();
  void add_sides();
  void add_resolution();
  double unit() const;
  void choose_named(int index);
  void take_sides();
  void show_size();
  void show_name();

  SizeOnPaper size_;
  std::vector<NamedSize> names_;
  bool in_pixels_;
  QComboBox named_;
  QDoubleSpinBox width_;
  QDoubleSpinBox height_;
  QComboBox unit_;
  QSpinBox resolution_;
  QLabel outcome_;
  QPushButton* save_ = nullptr;
};

}  // namespace tavlo
