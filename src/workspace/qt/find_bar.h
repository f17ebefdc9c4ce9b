// FindBar: the line at the foot of a window in which a person types what is to be found. It
// only asks: the window looks.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

namespace tavlo {

class FindBar : public QWidget {
  Q_OBJECT

 public:
  /// The empty line reads `invitation`.
  FindBar(const QString& invitation, QWidget* parent);

  QString wanted() const { return line_->text(); }

  /// Shows the bar with its line ready for typing; a text that is offered stands in it.
  void open(const QString& offered);

  /// Says how the search went; empty for well.
  void tell(const QString& words);

 signals:
  /// What is typed has changed: the search begins anew from where it began.
  void changed();
  void next();
  void previous();
  void closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLineEdit* line_;
  QLabel* told_;
};

}  // namespace tavlo
