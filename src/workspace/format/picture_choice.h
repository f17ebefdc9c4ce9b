// PictureChoice: one of several pictures, in rows. The arrow keys go from one to the
// next, Tab leaves them.
#pragma once

#include <QButtonGroup>
#include <QIcon>
#include <QWidget>

class QGridLayout;

namespace tavlo {

class PictureChoice : public QWidget {
  Q_OBJECT

 public:
  PictureChoice(int columns, const QSize& picture, QWidget* parent = nullptr);

  /// `name` tells the picture in words.
  void add(int value, const QIcon& picture, const QString& name);

  /// From now on pictures are added with their names beside them.
  void show_names() { with_names_ = true; }

  /// Shows the value as chosen; none when it is not among the pictures.
  void set_value(int value);

 signals:
  /// The person chose a picture.
  void chosen(int value);

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  void stop_at_checked();

  int columns_;
  QSize picture_;
  bool with_names_ = false;
  QButtonGroup buttons_;
  QGridLayout* grid_;
};

}  // namespace tavlo
