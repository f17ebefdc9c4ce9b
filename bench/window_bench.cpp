// The window program at a million rows, as a person has it before them: memory, keys until
// their effect shows, deleting everything, a long log, and leaving in the middle of a fit;
// with the name of a project: opening and saving it, in a window that has done nothing else.
// with --pauses: how long a fit of 10,000 points keeps the windows waiting at most.
//   tests/gui/with_display.sh build/bench/bench/window_bench [FILE | --pauses]
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QInputDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <random>
#include <string>

#include "actions/reports.h"
#include "actions/save_project.h"
#include "life/models.h"
#include "workspace/frame/command_table.h"
#include "workspace/frame/main_window.h"
#include "workspace/qt/large_blocks.h"
#include "workspace/qt/look.h"

namespace {

using namespace tavlo;

double megabytes(const char* which) {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  const QByteArray text = status.readAll();
  const qsizetype at = text.indexOf(which);
  return text.mid(at + 6, 20).trimmed().split(' ').value(0).toDouble() / 1024;
}

QString weibull_rows(int count) {
  std::mt19937_64 random(1);
  std::weibull_distribution<double> life(1.5, 1000.0);
  QString rows;
  for (int i = 0; i < count; ++i) rows += QString::number(life(random), 'g', 6) + QLatin1Char('\n');
  return rows;
}

struct Desk {
  Desk() {
    show_fitting(window);
    (void)QTest::qWaitFor([this] { return window.windows().sheet(1).hasFocus(); }, 15000);
    QObject::connect(&answering, &QTimer::timeout, [] {
      if (auto* question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget())) {
        question->setTextValue(QStringLiteral("1"));
        question->accept();
      }
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        std::printf("  box: %s\n", qPrintable(box->text().left(100)));
        (box->button(QMessageBox::No) ? box->button(QMessageBox::No) : box->buttons().front())
            ->click();
      }
    });
    answering.start(5);
  }

  /// Lets everything happen that is waiting to, painting too.
  void settle() {
    do QApplication::processEvents();
    while (program.commands.running());
    QApplication::processEvents();
  }
  template <class Act>
  void measure(const char* what, const Act& act) {
    QElapsedTimer timer;
    timer.start();
    act();
    settle();
    const auto milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    std::printf("%-46s %9.1f ms   %6.0f MB, at most %6.0f MB\n", what, milliseconds,
                megabytes("VmRSS:"), megabytes("VmHWM:"));
    std::fflush(stdout);
  }
  void press(int key, Qt::KeyboardModifiers with = {}) {
    const QString text = with || key > Qt::Key_AsciiTilde ? QString() : QString(QChar(key));
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
      qt_handleKeyEvent(window.windowHandle(), type, key, with, text);
  }
  void paste(const QString& rows) {
    QGuiApplication::clipboard()->setText(rows);
    window.DoCommand(command::paste);
  }
  void rows_of_a_million();
  void rows_by_commands();
  void log_of_many(int entries);
  void zoom_by_wheel();
  void leave_during_a_fit();
  void open_and_save(const char* path);
  void pauses_during_fits();

  Program program;
  MainWindow window{program};
  QTimer answering;
};

void Desk::rows_by_commands() {
  const auto go_to = [&](int row, int column) {
    measure("go there", [&] { window.windows().sheet(1).go_to_cell(row, column); });
  };
  go_to(3, sheet_column::x);
  measure("sort", [&] { window.DoCommand(command::sort_ascending); });
  measure("sort the other way", [&] { window.DoCommand(command::sort_descending); });
  measure("undo", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  measure("Page Down", [&] { press(Qt::Key_PageDown); });
  measure("Ctrl+Down", [&] { press(Qt::Key_Down, Qt::ControlModifier); });
  measure("Ctrl+Up", [&] { press(Qt::Key_Up, Qt::ControlModifier); });
  measure("insert a row", [&] { window.DoCommand(command::insert_rows); });
  measure("delete a row", [&] { window.DoCommand(command::delete_rows); });
  measure("leave a row out", [&] { window.DoCommand(command::leave_out); });
  measure("undo", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  go_to(1, sheet_column::mode);
  measure("type a mode", [&] {
    press(Qt::Key_M);
    press(Qt::Key_Return);
  });
  go_to(1, sheet_column::mode);
  measure("select the column", [&] { window.windows().sheet(1).selectColumn(4); });
  measure("fill down", [&] { window.DoCommand(command::fill_down); });
  measure("leave all out", [&] { window.DoCommand(command::leave_out); });
  measure("undo", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  measure("sort by words", [&] { window.DoCommand(command::sort_ascending); });
  measure("find what is not there", [&] {
    find_cell(window.windows().sheet(1).sheet(), std::array{1, 2, 3, 4, 5, 6},
              QStringLiteral("123456789"), {}, SearchWay::forward);
  });
  measure("undo", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
}

void Desk::rows_of_a_million() {
  const QString rows = weibull_rows(1'000'000);
  measure("start", [] {});
  measure("paste 1e6 rows", [&] { paste(rows); });
  QGuiApplication::clipboard()->clear();
  measure("clipboard emptied", [] {});
  measure("Ctrl+Home", [&] { press(Qt::Key_Home, Qt::ControlModifier); });
  measure("digit, at the top", [&] { press(Qt::Key_7); });
  measure("Enter", [&] { press(Qt::Key_Return); });
  measure("Calculate (W2P)", [&] { press(Qt::Key_C, Qt::AltModifier); });
  measure("Ctrl+1", [&] { press(Qt::Key_1, Qt::ControlModifier); });
  for (const char* place : {"top", "middle", "end"}) {
    const int row = *place == 't' ? 1 : *place == 'm' ? 500'000 : 999'999;
    std::printf("-- %s\n", place);
    measure("go there", [&] {
      QTableView& sheet = window.windows().sheet(1);
      sheet.setCurrentIndex(sheet.model()->index(row - 1, 0));
    });
    measure("digit", [&] { press(Qt::Key_8); });
    measure("another digit", [&] { press(Qt::Key_8); });
    measure("Enter", [&] { press(Qt::Key_Return); });
    measure("digit", [&] { press(Qt::Key_9); });
    measure("Enter", [&] { press(Qt::Key_Return); });
    measure("Down", [&] { press(Qt::Key_Down); });
    measure("Ctrl+Z", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
    measure("Ctrl+Y", [&] { press(Qt::Key_Y, Qt::ControlModifier); });
  }
  rows_by_commands();
  measure("Ctrl+A", [&] { press(Qt::Key_A, Qt::ControlModifier); });
  measure("Delete of 1e6 rows", [&] { press(Qt::Key_Delete); });
  measure("Ctrl+Z", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  measure("Ctrl+Y", [&] { press(Qt::Key_Y, Qt::ControlModifier); });
  measure("Ctrl+Z", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  measure("copy of 1e6 rows", [&] {
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
  });
}

void Desk::log_of_many(int entries) {
  measure("New Project", [&] { window.DoCommand(command::new_project); });
  program.commands.run([&] { AppendLog(program.session, "the first\n", false); });
  measure("log entries, one command each", [&] {
    for (int i = 0; i < entries; ++i)
      program.commands.run([&] {
        AppendLog(program.session, "\\par 54 units: eta = 606.5, beta = 1.72, r2 = 0.987 \\par",
                  true);
      });
  });
  measure("one entry more",
          [&] { program.commands.run([&] { AppendLog(program.session, "the last\n", false); }); });
  measure("Ctrl+4", [&] { press(Qt::Key_4, Qt::ControlModifier); });
  measure("search, of what stands first", [&] {
    press(Qt::Key_F, Qt::ControlModifier);
    for (const char c : {'f', 'i', 'r', 's', 't'}) press(c);
    press(Qt::Key_Return);
  });
  measure("Escape", [&] { press(Qt::Key_Escape); });
  measure("Ctrl+Home", [&] { press(Qt::Key_Home, Qt::ControlModifier); });
  measure("Page Down", [&] { press(Qt::Key_PageDown); });
  measure("Ctrl+Z", [&] { press(Qt::Key_Z, Qt::ControlModifier); });
  measure("Ctrl+Y", [&] { press(Qt::Key_Y, Qt::ControlModifier); });
}

/// The chart of 1e5 points, nearer and farther.
void Desk::zoom_by_wheel() {
  constexpr int turns = 5, notch = 120;
  measure("New Project", [&] { window.DoCommand(command::new_project); });
  measure("paste 1e5 rows", [&] { paste(weibull_rows(100'000)); });
  measure("Calculate (W2P)", [&] { press(Qt::Key_C, Qt::AltModifier); });
  QWidget& chart = window.windows().chart(1);
  const QPointF middle = chart.rect().center();
  for (int turn = 0; turn < 2 * turns; ++turn)
    measure("wheel", [&] {
      QWheelEvent wheel(middle, chart.mapToGlobal(middle), {}, {0, turn < turns ? notch : -notch},
                        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(&chart, &wheel);
    });
}

/// W7P of 10,000 points: what is pressed meanwhile, and how soon the frame is gone.
void Desk::leave_during_a_fit() {
  constexpr int bathtub = 7;  // place in the panel
  measure("New Project", [&] { window.DoCommand(command::new_project); });
  measure("paste 1e4 rows", [&] { paste(weibull_rows(10'000)); });
  QElapsedTimer since;
  QTimer::singleShot(100, &window, [&] {
    std::printf("  busy: %d\n", program.is_busy());
    press(Qt::Key_5);
    press(Qt::Key_W, Qt::ControlModifier);
    press(Qt::Key_Q, Qt::ControlModifier);
    since.start();
    window.close();
  });
  measure("W7P and the frame closed meanwhile", [&] {
    window.DoCommand(command::first_method + method_code::mle);
    window.DoCommand(command::first_model + bathtub);
    window.DoCommand(command::calculate);
  });
  std::printf("  gone %d, %lld ms after the click\n", !window.isVisible(),
              static_cast<long long>(since.elapsed()));
}

/// The longest time in which the event loop did not turn, while each model is fitted to 10,000
/// points by each method, with all that follows on the windows.
void Desk::pauses_during_fits() {
  paste(weibull_rows(10'000));
  settle();
  QTimer beat;
  QElapsedTimer since;
  qint64 longest = 0;
  const auto note = [&] { longest = std::max(longest, since.nsecsElapsed()), since.restart(); };
  QObject::connect(&beat, &QTimer::timeout, note);
  beat.start(1);
  for (const Model& model : models())
    for (const Method& method : methods()) {
      const bool asks = model.fixed_slope == 0;  // and is fitted as the exponential is
      if (model.panel_row < 0 || asks || !model.is_fitted_by(method.code)) continue;
      FitPanel& panel = window.panel();
      panel.nModel = model.code;
      panel.nMethod = method.code;
      longest = 0;
      since.start();
      QElapsedTimer whole;
      whole.start();
      window.DoCommand(command::calculate);
      settle();
      note();
      std::printf("%-4s %-4s longest pause %7.1f ms of %9.1f ms\n", model.command_name,
                  method.command_name, static_cast<double>(longest) / 1e6,
                  static_cast<double>(whole.nsecsElapsed()) / 1e6);
      std::fflush(stdout);
    }
}

void Desk::open_and_save(const char* path) {
  measure("start", [] {});
  measure("open", [&] { window.open_at_start(path); });
  const std::string copy = std::string(path) + ".copy.tavlo";
  measure("save", [&] { program.commands.run([&] { save_project_as(program.session, copy); }); });
  QFile::remove(QString::fromStdString(copy));
}

}  // namespace

int main(int argc, char** argv) {
  return_large_blocks();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  set_look(application);
  Desk desk;
  if (argc > 1 && std::string(argv[1]) == "--pauses") {
    desk.pauses_during_fits();
    return 0;
  }
  if (argc > 1) {
    desk.open_and_save(argv[1]);
    return 0;
  }
  desk.rows_of_a_million();
  desk.zoom_by_wheel();
  desk.log_of_many(100'000);
  desk.leave_during_a_fit();
}
