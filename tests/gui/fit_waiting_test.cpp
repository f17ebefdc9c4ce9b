// A fit that takes long: it can be given up, and whatever is pressed meanwhile harms nothing.
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <random>

#include "actions/clipboard_text.h"
#include "gui/window_world.h"

namespace tavlo {

namespace {

using test::wait_until;

class LongFit : public test::WindowWorld {
 protected:
  /// So many points that the fit of seven parameters takes a second on any machine.
  void SetUp() override {
    WindowWorld::SetUp();
    std::mt19937_64 random(7);
    std::weibull_distribution<double> life(1.5, 1000.0);
    std::string times;
    for (int i = 0; i < 1'000'000; ++i) times += std::to_string(life(random)) + '\n';
    program.commands.run([&] { drop_text(session(), 1, times); });
    ASSERT_EQ(sheet().last_row(), 1'000'000);
  }

  /// Begins the fit by its key and acts once when Cancel stands there, in the middle of it.
  void fit_and(const std::function<void()>& act) {
    bool acted = false;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, [&] {
      if (acted || !widget("btn_Cancel").isVisible()) return;
      acted = true;
      act();
    });
    looks.start(20);
    person.press({"alt+7"});
    ASSERT_TRUE(wait_until([&] { return acted && !program.commands.running(); }, 60'000));
  }

  // Another process would come too late on a busy machine.
  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(window.windowHandle(), key, with);
  }
  void click(const QWidget& at) {
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      at.mapTo(&window, at.rect().center()));
  }

  void expect_no_fit() {
    EXPECT_EQ(fits().rows(), 1);
    EXPECT_EQ(session().gFitForm(1)->remark, "Stopped: W7P/rr was not made.");
    EXPECT_FALSE(widget("btn_Cancel").isVisible());
    EXPECT_EQ(static_cast<QPushButton&>(widget("btn_Fit")).text(),
              QStringLiteral("&Calculate Fit"));
    EXPECT_EQ(boxes.texts().size(), 0);
  }
};

TEST_F(LongFit, IsGivenUpByAClickOrByEscapeAndHearsNothingElse) {
  const std::string first = sheet().text(1, sheet_column::x);
  fit_and([&] { click(widget("btn_Cancel")); });
  expect_no_fit();
  fit_and([&] {
    click(*window.windows().sheet(1).viewport());
    for (const Qt::Key key : {Qt::Key_5, Qt::Key_Return, Qt::Key_Delete}) press(key);
    for (const Qt::Key key : {Qt::Key_Z, Qt::Key_N, Qt::Key_W}) press(key, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_2, Qt::Key_C}) press(key, Qt::AltModifier);
    click(widget("btn_Fit"));
    click(widget("opt_Model_8"));
    press(Qt::Key_Escape);
  });
  expect_no_fit();
  EXPECT_EQ(sheet().text(1, sheet_column::x), first);
  EXPECT_EQ(sheet().last_row(), 1'000'000);
  EXPECT_TRUE(window.windows().child({Block::sheet, 1})->isVisible());
  person.press({"alt+2"});
  EXPECT_TRUE(wait_until([&] { return fits().rows() == 2 && !program.commands.running(); }));
}

}  // namespace

}  // namespace tavlo
