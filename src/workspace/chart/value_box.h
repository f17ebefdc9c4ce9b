// ValueBox: the small box on a chart in which a percentage or a time is typed, with what the
// fits say of it. Enter asks; Enter once more copies the answers; Esc ends it.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <optional>
#include <vector>

#include "chart/compose/asked_value.h"
#include "workspace/chart/chart_stage.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class ValueBox : public QFrame {
  Q_OBJECT

 public:
  ValueBox(ChartStage& stage, UserCommands& commands, QWidget* parent);

  /// Comes up with a text that the person goes on typing.
  void open(const QString& text);
  /// Asks again where the chart shows others, or nothing where nothing was asked.
  void follow();
  /// The way to each answer, from the axes.
  void paint_answers(QPainter& painter) const;

 signals:
  void changed();
  void closed();
  void said(const QString& words);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPushButton* add_button(const QString& caption, const QString& name, const QString& tip,
                          void (ValueBox::*act)());
  void enter();
  void ask();
  void show_answers(const QString& words);
  void forget();
  void copy();
  void mark();
  void leave();

  ChartStage& stage_;
  UserCommands& commands_;
  QLineEdit entry_;
  QLabel answer_;
  QPushButton* copy_;
  QPushButton* mark_;
  std::optional<AskedValue> asked_;
  std::vector<FitSaying> sayings_;
};

}  // namespace tavlo
