// BreakWindow (frm_Break): stands while a macro runs in a program of its own, so that the
// person can stop it.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include "actions/start.h"

namespace tavlo {

class BreakWindow : public QWidget {
  Q_OBJECT

 public:
  /// Starts the macro. What its program says goes where this program's own words go.
  explicit BreakWindow(const MacroOrder& order);
  ~BreakWindow() override;

 signals:
  /// The macro has ended, or was never begun.
  void ended(int exit_code);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void show_seconds();
  void send_break();

  QLabel words_;
  QPushButton cmd_Break_;
  QTimer tmr_break_;
  QElapsedTimer since_load_;
  QProcess macro_;
};

/// Shows the window until the macro ends; its exit code.
int run_macro_with_break(const MacroOrder& order);

}  // namespace tavlo
