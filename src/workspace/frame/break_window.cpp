#include "workspace/frame/break_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QVBoxLayout>
#include <csignal>

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int file_fault = 3;       // as the macro program's own exit code
constexpr int ended_by_signal = 1;  // a crash, or a kill from elsewhere

}  // namespace

BreakWindow::BreakWindow(const MacroOrder& order)
    : words_(tr("Click the 'Break' button\nto stop the macro.")), cmd_Break_(tr("&Break")) {
  setObjectName(QStringLiteral("frm_Break"));
  cmd_Break_.setObjectName(QStringLiteral("cmd_Break"));
  cmd_Break_.setAccessibleDescription(words_.text());
  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetMinimumSize);
  const int margin = fontMetrics().height();
  layout->setContentsMargins(2 * margin, margin, 2 * margin, margin);
  layout->setSpacing(margin);
  words_.setAlignment(Qt::AlignCenter);
  layout->addWidget(&words_);
  layout->addWidget(&cmd_Break_, 0, Qt::AlignCenter);
  setMinimumWidth(fontMetrics().averageCharWidth() * 60);  // the caption is read whole
  connect(&cmd_Break_, &QPushButton::clicked, this, &BreakWindow::send_break);
  connect(&tmr_break_, &QTimer::timeout, this, &BreakWindow::show_seconds);
  connect(&macro_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
    emit ended(status == QProcess::NormalExit ? code : ended_by_signal);
  });
  connect(&macro_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) emit ended(file_fault);
  });
  since_load_.start();
  show_seconds();
  tmr_break_.start(1000);
  macro_.setProcessChannelMode(QProcess::ForwardedChannels);
  macro_.setInputChannelMode(QProcess::ForwardedInputChannel);
  macro_.start(to_qt(order.program), {to_qt(order.macro)});
}

BreakWindow::~BreakWindow() { macro_.disconnect(this); }

void BreakWindow::show_seconds() {
  setWindowTitle(QStringLiteral("QMV Run: %1 seconds").arg(since_load_.elapsed() / 1000));
}

/// SIGINT may be ignored there, as it is by what a shell starts behind its back.
void BreakWindow::send_break() {
  if (macro_.processId() > 0) ::kill(static_cast<pid_t>(macro_.processId()), SIGTERM);
}

/// The window stays until the rows that are there have their file's name.
void BreakWindow::closeEvent(QCloseEvent* event) {
  send_break();
  event->ignore();
}

int run_macro_with_break(const MacroOrder& order) {
  QApplication::setQuitOnLastWindowClosed(false);
  BreakWindow window(order);
  QObject::connect(&window, &BreakWindow::ended, &window, &QApplication::exit,
                   Qt::QueuedConnection);
  window.show();
  return QApplication::exec();
}

}  // namespace tavlo
