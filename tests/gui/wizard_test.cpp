// The fit wizard, by real keys and clicks.
#include "gui/window_world.h"
#include "workspace/guidance/wizard_window.h"

namespace tavlo {
namespace {

using test::wait_until;

struct WizardTest : test::WindowWorld {
  void SetUp() override {
    test::WindowWorld::SetUp();
    person.press({"alt+t", "f"});
    ASSERT_TRUE(wait_until([&] {
      wizard = window.findChild<WizardWindow*>();
      return wizard && wizard->isActiveWindow();
    }));
  }

  template <class Widget>
  Widget& part(const char* name) {
    return *wizard->findChild<Widget*>(QString::fromUtf8(name));
  }

  QString question() { return part<QGroupBox>("fraQuestion").title(); }

  /// Clicks an answer, from 0, and waits for the question or the advice that it leads to.
  void answer(int place, const char* next) {
    person.click(part<QRadioButton>(("opt_Mod" + std::to_string(place)).c_str()), {8, 8});
    expect_step(next);
  }

  void expect_step(const char* start) {
    EXPECT_TRUE(wait_until([&] {
      return question().startsWith(QString::fromUtf8(start)) ||
             part<QLabel>("lbl_model").text().startsWith(QString::fromUtf8(start));
    })) << start
        << " is not reached: " << from_qt(question());
  }

  WizardWindow* wizard = nullptr;
};

TEST_F(WizardTest, SetsTheModelThatItAdvisesAndCalculatesNothing) {
  program.commands.run([&] {
    for (int i = 1; i <= 6; ++i) sheet().enter(i, sheet_column::x, std::to_string(100 * i));
  });
  ASSERT_TRUE(session().settings.QuickCalculation);
  EXPECT_TRUE(part<QLabel>("lbl_model").text().startsWith(QStringLiteral("1. Plot your data")));
  answer(0, "1. What kind");
  answer(1, "45.");
  answer(1, "47.");
  EXPECT_TRUE(part<QPushButton>("cmd_Set").isHidden());
  answer(1, "49.");
  answer(0, "50. Use Competing Risk Mixture with MLE");
  person.click(part<QPushButton>("cmd_Set"));
  const FitPanel& panel = *session().gFitForm(1);
  EXPECT_TRUE(wait_until([&] { return panel.nModel == model_code::weibull5c; }));
  EXPECT_EQ(panel.nMethod, method_code::mle);
  EXPECT_EQ(session().project.fits(1).nFits, 0);
  EXPECT_TRUE(boxes.texts().isEmpty());
  wizard->close();
  person.press({"alt+t", "f"});
  expect_step("0. Do you want");
}

TEST_F(WizardTest, GoesThroughItsHistoryByButtonsAndWheel) {
  answer(0, "1. What kind");
  answer(0, "6. How many");
  person.click(part<QPushButton>("cmd_Flow0"));
  expect_step("0. Do you want");
  person.click(part<QPushButton>("cmd_Flow1"));
  expect_step("1. What kind");
  person.turn_wheel(part<QGroupBox>("fraQuestion"), {40, 80}, true);
  expect_step("0. Do you want");
  answer(0, "1. What kind");
  answer(0, "6. How many");
  answer(3, "25. Run a 2parameter");
  person.click(part<QPushButton>("cmd_Flow2"));
  expect_step("26. Run W2P");
  answer(1, "28. Predict");
  answer(0, "29. Use Kaplan- Meier.");
  EXPECT_TRUE(part<QLabel>("lbl_Lacks").text().contains(QStringLiteral("Kaplan-Meier")));
}

TEST_F(WizardTest, ShowsAnExampleOnEachTab) {
  auto& tabs = part<QTabWidget>("SST_Models");
  ASSERT_EQ(tabs.count(), 10);
  for (int i = 1; i < tabs.count(); ++i) {
    tabs.setCurrentIndex(i);
    auto& picture = *tabs.widget(i)->findChild<ExamplePicture*>();
    ASSERT_TRUE(wait_until([&] { return picture.isVisible(); }));
    const QImage image = picture.grab().toImage();
    QSet<QRgb> seen;
    for (int x = 0; x < image.width(); x += 3)
      for (int y = 0; y < image.height(); y += 3) seen.insert(image.pixel(x, y));
    EXPECT_GT(seen.size(), 20) << i << ": a chart has points, lines and words";
    EXPECT_FALSE(picture.accessibleName().isEmpty());
  }
}

}  // namespace
}  // namespace tavlo
