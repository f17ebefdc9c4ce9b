// LifePanel: the answers read off the chosen fit, beside the grid of fits: B lives,
// reliabilities and the mean life, with fields for further questions. A row is marked on the
// chart by a click on its sign.
#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>

#include "actions/life_table.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class LifePanel : public QFrame {
  Q_OBJECT

 public:
  LifePanel(Session& session, UserCommands& commands, int fit_index, QWidget* parent = nullptr);

  /// Shows the answers of the fit in a row of the fit grid.
  void show_fit_of(int grid_row);

  /// The answers as they are shown.
  const LifeTable& table() const { return table_; }

  /// A tall panel has its buttons below the table, a low one beside the questions.
  void set_tall(bool is_tall);
  /// The least width of a tall one, in pixels.
  int tall_width() const;

  /// The whole table goes to the clipboard. False where there is none.
  bool copy();

  /// Marks the current row on the chart.
  void mark();

  /// Why the current row can't be marked; empty when it can.
  std::string why_not_marked() const;

  /// Why there is nothing to copy; empty when there is.
  std::string why_not_copied() const;

 signals:
  void hint_wanted(const QString& hint);
  void row_chosen();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Ask = std::string (*)(Session&, const std::string&);

  QWidget* make_questions();
  QWidget* make_buttons();
  void add_question(QHBoxLayout& row, QLineEdit& field, const char* name, const QString& caption,
                    const QString& tip, Ask ask);
  void set_up_answers();
  void show_answers();
  void show_what_works();
  void put(int row, int column, const QString& text, const std::string& tip);
  void take(QLineEdit& field, Ask ask);
  void show_reason(QLineEdit& field, const std::string& reason);
  void drop_current();
  void tell_panels();
  const LifeAnswer* current() const;

  Session& session_;
  UserCommands& commands_;
  int index_;
  int grid_row_ = 0;
  LifeTable table_;
  QTableWidget grd_Life_;
  QLabel lbl_Remark_;
  QLineEdit txt_Percent_;
  QLineEdit txt_Time_;
  QLabel lbl_Reason_;
  QWidget* questions_ = nullptr;
  QWidget* buttons_ = nullptr;
  QToolButton* btn_Mark_ = nullptr;
  QToolButton* btn_Copy_ = nullptr;
};

}  // namespace tavlo
