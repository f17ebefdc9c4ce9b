// The answers beside the fits: asked, copied and marked as a person does it.
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimer>

#include "gui/window_world.h"
#include "numerics/number_text.h"
#include "workspace/frame/command_table.h"

namespace tavlo {

namespace {

using test::wait_until;

class LifePanelAtWork : public test::WindowWorld {
 protected:
  QTableWidget& answers() { return static_cast<QTableWidget&>(widget("grd_Life")); }
  double answer(int row) {
    return parse_number(answers().item(row, 1)->text().toStdString()).value_or(-1);
  }
  void fit(std::initializer_list<const char*> keys, int fits_then) {
    person.press(keys);
    ASSERT_TRUE(wait_until([&] {
      return session().project.fits(1).nFits == fits_then && !program.commands.running();
    }));
  }
};

TEST_F(LifePanelAtWork, AnswersAreAskedCopiedAndMarked) {
  type_handbook_example();
  fit({"alt+c"}, 1);
  ASSERT_TRUE(wait_until([&] { return answer(1) > 0; }));
  const double eta = parse_number(fits().text(1, fit_column::scale)).value();
  const double beta = parse_number(fits().text(1, fit_column::shape)).value();
  EXPECT_NEAR(answer(1), eta * std::pow(-std::log(0.9), 1 / beta), 0.1);

  person.click(widget("txt_Percent"));
  person.type("abc\n");
  ASSERT_TRUE(wait_until([&] { return widget("lbl_LifeReason").isVisible(); }));
  EXPECT_EQ(answers().rowCount(), 4);
  person.press({"ctrl+a"});
  person.type("20\n");
  ASSERT_TRUE(wait_until([&] { return answers().rowCount() == 5; }));
  EXPECT_EQ(answers().item(2, 0)->text(), QStringLiteral("B20"));
  EXPECT_FALSE(widget("lbl_LifeReason").isVisible());

  person.press({"ctrl+shift+b"});
  const QByteArray copied = person.paste_elsewhere();
  EXPECT_TRUE(copied.contains("B20\t" + answers().item(2, 1)->text().toUtf8())) << copied.data();
  EXPECT_TRUE(person.paste_elsewhere(QStringLiteral("text/html")).contains("<td"));

  answers().scrollToItem(answers().item(2, 2));
  const QRect sign = answers().visualItemRect(answers().item(2, 2));
  person.click(*answers().viewport(), sign.center());
  ASSERT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 1; }));
  EXPECT_TRUE(test::wait_until([&] {
    return window.windows().chart(1).stage().answered().Texts(1).Text2.starts_with("B20 = ");
  }));
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 0; }));

  // The command follows the row that is chosen: no other row's refusal stays.
  person.click(*answers().viewport(), answers().visualItemRect(answers().item(0, 0)).center());
  person.press({"Down", "Down", "ctrl+m"});
  EXPECT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 1; }));
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 0; }));

  person.press({"ctrl+l"});
  EXPECT_TRUE(wait_until([&] { return !answers().isVisible(); }));
  EXPECT_EQ(boxes.texts(), QStringList());
}

// The menu's own fits, and what the keyboard does with a row of the grid.
TEST_F(LifePanelAtWork, RowsOfTheGridObeyTheKeyboard) {
  type_handbook_example();
  fit({"alt+c"}, 1);
  window.DoCommand(49);
  ASSERT_TRUE(wait_until(
      [&] { return session().project.fits(1).nFits == 2 && !program.commands.running(); }));
  EXPECT_EQ(session().project.fits(1).Fits(2).ModelCode, model_code::weibull3);
  EXPECT_TRUE(answers().horizontalHeaderItem(1)->text().contains(QStringLiteral("W3T")));
  window.windows().panel(1).grid().setFocus();
  const auto drawn = [&] {
    return window.windows().panel(1).grid().model()->index(1, 0).data(Qt::CheckStateRole).toInt();
  };
  const int before = drawn();
  person.press({"space"});
  EXPECT_TRUE(wait_until([&] { return drawn() != before; }));
  person.press({"ctrl+c"});
  EXPECT_TRUE(wait_until([&] { return person.paste_elsewhere().count("W3T/rr") == 1; }));
  EXPECT_TRUE(person.paste_elsewhere().contains("W/rr")) << "all, where nothing is selected";
  fit({"Delete"}, 1);
  fit({"ctrl+z"}, 2);

  // A fit in the middle that comes back is shown again: grid and lives are of what is drawn.
  person.click(widget("opt_Model_8"), {8, 8});
  fit({"alt+c"}, 3);
  QTableView& grid = window.windows().panel(1).grid();
  person.click(*grid.viewport(), grid.visualRect(grid.model()->index(1, 2)).center());
  ASSERT_TRUE(wait_until([&] { return session().project.charts(1).Markers(1).FitNumber == 2; }));
  fit({"Delete"}, 2);
  fit({"ctrl+z"}, 3);
  EXPECT_TRUE(wait_until([&] { return session().project.charts(1).Markers(1).FitNumber == 2; }));
  EXPECT_EQ(grid.currentIndex().row(), 1);
}

}  // namespace

}  // namespace tavlo
