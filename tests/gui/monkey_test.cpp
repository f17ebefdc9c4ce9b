// A monkey in front of the whole program: seeded random keys, clicks and drags, also while a
// fit runs and in every dialog. Whatever it does can be taken back, and done again.
//   TAVLO_MONKEY_STEPS=20000 TAVLO_MONKEY_SEED=7 tests/gui/with_display.sh
//   build/release/tests/gui/tavlo_gui_tests --gtest_filter='Monkey.*'
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractPrintDialog>
#include <QClipboard>
#include <QDrag>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <array>
#include <csignal>
#include <cstdio>
#include <memory>
#include <random>

#include "actions/undo.h"
#include "gui/person.h"
#include "gui/quick_hand.h"
#include "workspace/frame/command_table.h"
#include "workspace/frame/main_window.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {
namespace {

int from_environment(const char* name, int usual) {
  return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : usual;
}

const int seed = from_environment("TAVLO_MONKEY_SEED", 1);
int steps_made = 0;

// What was done last, for the one who has to find out why it ended.
std::array<char[120], 60> diary;
std::size_t entries = 0;

void note(const QString& what) { qstrncpy(diary[entries++ % diary.size()], qPrintable(what), 120); }

void print_diary() {
  std::fprintf(stderr, "Monkey: seed %d, step %d, after\n", seed, steps_made);
  for (std::size_t i = 0; i < diary.size(); ++i)
    std::fprintf(stderr, "  %s\n", diary[(entries + i) % diary.size()]);
}

void tell_and_end(int signal) {
  print_diary();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

constexpr const char* words[] = {"250.5", "17",  "1e5", "400x3", ">500x10", "600s", "-30", "1e308",
                                 "1e500", "abc", "0",   "1,5",   "",        "12 F", "%",   "3 cm"};
constexpr const char* pastes[] = {"time\tstatus\n100\tF\n150\tS\n230\tF\n310\tF\n",
                                  "1071,8\n1069,3\n1000,1\n",
                                  "54\n187\n216\n240\n244\n335\n361\n373\n375\n386\n>500x10\n",
                                  "1\n2\n\n3\n",
                                  "x;y\n1;2\n",
                                  "\xff\xfe\x01 z\t\t"};
constexpr Qt::Key keys[] = {Qt::Key_Return, Qt::Key_Escape,   Qt::Key_Tab,      Qt::Key_Backtab,
                            Qt::Key_Delete, Qt::Key_Home,     Qt::Key_End,      Qt::Key_Up,
                            Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right,    Qt::Key_F2,
                            Qt::Key_Space,  Qt::Key_PageDown, Qt::Key_F6,       Qt::Key_Plus,
                            Qt::Key_Minus,  Qt::Key_7,        Qt::Key_Backspace};
constexpr Qt::KeyboardModifiers modifiers[] = {{}, {}, {}, Qt::ShiftModifier, Qt::ControlModifier};
constexpr auto control = Qt::ControlModifier, alt = Qt::AltModifier;
constexpr int undo_command = 18, redo_command = 19;

class Monkey : public ::testing::Test {
 protected:
  int below(int end) { return std::uniform_int_distribution(0, std::max(end, 1) - 1)(random_); }
  bool happens(int percent) { return below(100) < percent; }
  template <class Things>
  auto any(const Things& things) {
    return std::data(things)[below(static_cast<int>(std::size(things)))];
  }
  auto any(std::initializer_list<Qt::Key> keys_named) {
    return std::data(keys_named)[below(static_cast<int>(keys_named.size()))];
  }

  void press(int key, Qt::KeyboardModifiers with = {}) {
    note(QKeySequence(int(with) | key).toString());
    hand_->press(key, with);
  }
  void type(const char* text) {
    note(QString::fromUtf8(text));
    hand_->type(text);
    press(any({Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Escape}));
  }
  void choose_below(int key, Qt::KeyboardModifiers with, int most) {
    press(key, with);
    for (int i = below(most); i >= 0; --i) press(happens(90) ? Qt::Key_Down : Qt::Key_Right);
    press(Qt::Key_Return);
  }
  QPoint anywhere() {
    QWidget& front = hand_->front();
    QList<QWidget*> places = front.findChildren<QWidget*>();
    places.removeIf([](QWidget* each) { return !each->isVisible() || each->isWindow(); });
    QWidget* const place = places.isEmpty() ? &front : any(places);
    note(QString::fromUtf8(place->metaObject()->className()) + place->objectName());
    return place->mapTo(&front, QPoint(below(place->width()), below(place->height())));
  }
  void drag() {
    hand_->hold(anywhere());
    for (int i = 0; i < 3; ++i) hand_->move_to(anywhere());
    if (happens(10)) press(any(keys));
    hand_->let_go(anywhere());
  }
  void paste() {
    const QString text = QString::fromUtf8(any(pastes));
    QGuiApplication::clipboard()->setText(happens(20) ? text.repeated(100) : text);
    press(Qt::Key_V, control);
  }
  void command() {
    const auto commands = all_commands(*window_);
    const Command chosen = any(commands);
    note(to_qt("command " + chosen.caption));
    if (!is_nested()) window_->DoCommand(chosen.id);
  }
  void change_window() {
    ChildWindow& child = *any(window_->windows().children());
    const int way = below(5);
    note(QStringLiteral("window %1 %2").arg(child.node_key()).arg(way));
    way == 0 ? child.showMinimized() : way == 1 ? child.showMaximized() : child.showNormal();
    if (way == 3) child.close();
    if (way == 4) window_->resize(300 + below(1000), 200 + below(600));
  }
  void leave() {
    note(QStringLiteral("closes the frame"));
    window_->close();
  }

  void act() {
    const auto* dialog = QApplication::activeModalWidget();
    // Files and printers belong to others.
    const bool is_foreign = qobject_cast<const QFileDialog*>(dialog) ||
                            qobject_cast<const QAbstractPrintDialog*>(dialog);
    dialog_steps_ = dialog ? dialog_steps_ + 1 : 0;
    if (is_foreign || dialog_steps_ > 60) return hand_->dismiss();
    if (qobject_cast<const QMessageBox*>(dialog) && happens(60))
      return press(any({Qt::Key_Return, Qt::Key_Escape, Qt::Key_Y, Qt::Key_N}));
    if (below(program_->is_busy() ? 50 : 2000) == 0) return leave();
    switch (below(24)) {
      case 0: return press(Qt::Key_A + below(26), happens(50) ? control : alt);
      case 1: return press(any({Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_U}), control);
      case 2: return choose_below(any({Qt::Key_F, Qt::Key_O, Qt::Key_W}), alt, 9);
      case 3: return choose_below(Qt::Key_Menu, {}, 22);
      case 4: return command();
      case 5: return paste();
      case 6: return press(any({Qt::Key_Z, Qt::Key_Z, Qt::Key_Y}), control);
      case 7: return press(Qt::Key_C, alt);
      case 8: return hand_->turn_wheel(anywhere(), 1 - 2 * below(2));
      case 9: return change_window();
      case 10:
      case 11: return drag();
      case 12:
      case 13: press(Qt::Key_1, control); [[fallthrough]];
      case 14:
      case 15: return type(any(words));
      case 16:
      case 17: return press(any(keys), any(modifiers));
      default:
        hand_->click(anywhere(), happens(85) ? Qt::LeftButton : Qt::RightButton, any(modifiers),
                     happens(10) ? 2 : 1);
    }
  }

  bool is_nested() const { return &hand_->front() != window_.get(); }
  bool is_at_rest() const { return !is_nested() && !program_->commands.running() && depth_ == 0; }

  /// A step, and the next one from whatever event loop turns then.
  void tick() {
    const bool goes_on = steps_left_ > 0 && window_->isVisible();
    ticking_ = goes_on || !is_at_rest();
    if (!ticking_) return;
    QTimer::singleShot(0, qApp, [this] { tick(); });
    alarm(60);
    ++depth_;
    steps_made += goes_on;
    steps_left_ -= goes_on;
    busy_steps_ += program_->is_busy();
    goes_on ? act() : hand_->dismiss();
    --depth_;
  }
  void make_steps(int count) {
    steps_left_ = count;
    for (tick(); ticking_ || !is_at_rest();)
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  }

  void take(int command) {
    alarm(60);
    const Project before = session().project;
    window_->DoCommand(command);
    ASSERT_TRUE(
        test::wait_until([&] { return is_at_rest() && !(session().project == before); }, 5000))
        << "nothing came of " << command << ", " << session().history.undo_name() << ", dragging "
        << window_->windows().is_dragging() << ", busy " << program_->is_busy() << ", nested "
        << is_nested() << ", running " << program_->commands.running();
  }
  void take_all_back_and_do_it_again() {
    // What is being typed becomes a step when the first one is taken back.
    for (int i = 1; i <= session().project.data.bound(); ++i)
      window_->windows().sheet(i).leave_edit();
    window_->windows().log().end_edit();
    const Project last = session().project;
    EXPECT_TRUE(last == session().history.now()) << "a change that is no step";
    EXPECT_EQ(window_->windows().count(),
              last.data.bound() + last.fits.bound() + last.charts.bound() + 1);
    int steps = 0;
    for (; session().history.can_undo() && !HasFatalFailure(); ++steps) take(undo_command);
    EXPECT_TRUE(differ_in_view_only(session().project, first_));
    for (; steps > 0 && !HasFatalFailure(); --steps) take(redo_command);
    const Project& again = session().project;
    EXPECT_TRUE(differ_in_view_only(again, last))
        << "data " << (again.data == last.data) << ", fits " << (again.fits == last.fits)
        << ", log " << (again.log == last.log);
    session().history.restart(first_ = session().project);
  }

  Session& session() { return program_->session; }
  void open_program() {
    window_.reset();
    program_ = std::make_unique<Program>();
    window_ = std::make_unique<MainWindow>(*program_);
    hand_ = std::make_unique<test::QuickHand>(*window_);
    show_fitting(*window_);
    (void)QTest::qWaitForWindowActive(window_.get());
    first_ = session().project;
  }

  std::mt19937 random_{static_cast<unsigned>(seed)};
  std::unique_ptr<Program> program_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<test::QuickHand> hand_;
  Project first_;
  int steps_left_ = 0, busy_steps_ = 0, dialog_steps_ = 0, depth_ = 0;
  bool ticking_ = false;
};

TEST_F(Monkey, EndsWhereItCanGoBackToTheStart) {
  const int steps = from_environment("TAVLO_MONKEY_STEPS", 400);
  const auto deadly = {SIGALRM, SIGSEGV, SIGABRT, SIGFPE};
  for (const int signal : deadly) std::signal(signal, tell_and_end);
  // Text that is dragged waits for the display's own mouse, a box after an undo for anybody.
  QTimer rescue;
  QObject::connect(&rescue, &QTimer::timeout, [this] {
    QDrag::cancel();
    if (!ticking_) hand_->dismiss();
  });
  rescue.start(100);
  while (steps_made < steps && !HasFailure()) {
    if (!window_ || !window_->isVisible()) open_program();
    make_steps(std::min(200, steps - steps_made));
    take_all_back_and_do_it_again();
  }
  alarm(0);
  for (const int signal : deadly) std::signal(signal, SIG_DFL);
  std::printf("%d of %d steps while a fit ran\n", busy_steps_, steps_made);
  if (HasFailure()) print_diary();
}

}  // namespace
}  // namespace tavlo
