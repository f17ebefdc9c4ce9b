// The main job: typed or pasted times become a fitted line.
#include <QAbstractButton>
#include <QLabel>
#include <QTableView>

#include "gui/window_world.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

using test::wait_until;
using MainJob = test::WindowWorld;

double number(const Grid& grid, int row, int column) {
  return parse_number(grid.text(row, column)).value_or(-1);
}

// The e-Handbook's maximum likelihood answer: eta 606.528, beta 1.7208.
TEST_F(MainJob, KeyboardAlone) {
  EXPECT_FALSE(chart_has_fit_line());
  type_handbook_example();
  person.press({QStringLiteral("ctrl+2"), QStringLiteral("shift+Tab"), QStringLiteral("Down")});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->nMethod == method_code::mle; }));
  person.press({QStringLiteral("ctrl+1"), QStringLiteral("alt+c")});
  ASSERT_TRUE(wait_until([&] { return fits().rows() > 1 && !program.commands.running(); }));

  EXPECT_EQ(fits().text(1, fit_column::model), "W/MLE");
  EXPECT_NEAR(number(fits(), 1, fit_column::scale), 606.528, 0.01);
  EXPECT_NEAR(number(fits(), 1, fit_column::shape), 1.7208, 0.001);
  EXPECT_NEAR(number(fits(), 1, fit_column::quality), -75.1346, 0.001);
  EXPECT_NE(log().find("********** Tavlo Fit ********** "), std::string::npos) << log();
  EXPECT_NE(from_qt(window.windows().log().toPlainText()).find("606.52"), std::string::npos);
  EXPECT_TRUE(chart_has_fit_line());
  EXPECT_EQ(boxes.texts(), QStringList());

  person.press({QStringLiteral("ctrl+4"), QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
  EXPECT_TRUE(person.paste_elsewhere().contains(QStringLiteral("Tavlo Fit"))) << "from the log";
}

TEST_F(MainJob, MouseAlone) {
  person.copy_elsewhere(QStringLiteral("100\n200\n300\n"));
  person.click(*window.windows().sheet(1).viewport(), {20, 10});
  person.press({QStringLiteral("ctrl+v")});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->lrows == 3; }));
  person.click(widget("opt_Method_2"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 2; }));
  EXPECT_EQ(fits().text(1, fit_column::model), "W/rrs");
  person.click(widget("opt_Method_0"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 3; }));
  person.click(widget("btn_Fit"));
  ASSERT_TRUE(wait_until([&] { return !program.commands.running(); }));
  EXPECT_EQ(fits().rows(), 3) << "a fit that stands is not added again";
  EXPECT_TRUE(chart_has_fit_line());
}

// A click on each model adds its fit; the question for a slope takes its offer
// or what is typed.
TEST_F(MainJob, EveryClassicalModelByAClick) {
  person.copy_elsewhere(QStringLiteral("100\n150\n210\n300\n>400\n"));
  person.click(*window.windows().sheet(1).viewport(), {20, 10});
  person.press({QStringLiteral("ctrl+v")});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->lrows == 5; }));
  const auto choose = [&](const char* option, const std::string& name) {
    person.click(widget(option), {8, 8});
    const int row = fits().rows();
    EXPECT_TRUE(wait_until([&] { return fits().rows() > row || fits().text(row - 1, 2) == name; }))
        << option;
    EXPECT_EQ(fits().text(fits().rows() - 1, fit_column::model), name);
    EXPECT_TRUE(chart_has_fit_line()) << name;
  };
  choose("opt_Model_8", "N/rr");
  choose("opt_Model_9", "LN/rr");
  choose("opt_Model_10", "G-/rr");
  choose("opt_Model_11", "G+/rr");
  EXPECT_EQ(boxes.texts(), QStringList());
  boxes.answer_questions({});
  choose("opt_Model_12", "E/rr");
  boxes.answer_questions({QStringLiteral("2"), QStringLiteral("period"), QStringLiteral("5")});
  choose("opt_Model_14", "Wb/rr");
  EXPECT_EQ(number(fits(), fits().rows() - 1, fit_column::shape), 2.5);
  EXPECT_EQ(boxes.texts().size(), 2);
  boxes.answer_questions({QStringLiteral("1")});
  person.click(widget("opt_Model_14"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->nModel == model_code::exponential; }));
  EXPECT_TRUE(dynamic_cast<const QAbstractButton&>(widget("opt_Model_12")).isChecked());
  EXPECT_EQ(fits().text(0, fit_column::scale), "mu, Med, Xi, eta");
}

TEST_F(MainJob, AMixtureShowsItsPopulationsAndHowSureItIs) {
  QString times;
  for (int i = 1; i <= 60; ++i)
    times += QString::number(i <= 20 ? 3 * i + i % 4 : 500 + 12 * i + i % 7) + u'\n';
  person.copy_elsewhere(times);
  person.click(*window.windows().sheet(1).viewport(), {20, 10});
  person.press({QStringLiteral("ctrl+v")});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->lrows == 60; }));
  person.click(widget("opt_Model_5"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 3 && !program.commands.running(); }));
  EXPECT_EQ(fits().text(1, fit_column::model).substr(0, 6), "W5C/rr");
  EXPECT_EQ(fits().text(2, fit_column::sub_population), "1,2");
  const auto& hint = dynamic_cast<const QLabel&>(widget("lbl_Tip"));
  EXPECT_TRUE(hint.text().contains(QStringLiteral("starts ended at this optimum"))) << "status";
  EXPECT_TRUE(chart_has_fit_line());
}

TEST_F(MainJob, TheCensoredSwitchMakesAFitBesideTheOtherAndNotesAreATip) {
  QString times;
  for (int i = 1; i <= 60; ++i)
    times += QString::number(i <= 20 ? 3 * i + i % 4 : 500 + 12 * i + i % 7) + u'\n';
  person.copy_elsewhere(times + QStringLiteral(">1500x9\n"));
  person.click(*window.windows().sheet(1).viewport(), {20, 10});
  person.press({QStringLiteral("ctrl+v")});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->lrows == 61; }));
  EXPECT_FALSE(widget("chk_Censored").isEnabled()) << "regression has no such choice";
  person.click(widget("opt_Method_1"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 2 && !program.commands.running(); }));
  person.click(widget("opt_Model_5"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 4 && !program.commands.running(); }));
  EXPECT_EQ(fits().text(2, fit_column::model), "W5C/MLE *");
  person.click(widget("chk_Censored"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->censored; }));
  EXPECT_EQ(fits().rows(), 4) << "a switch changes no fit";
  person.click(widget("btn_Fit"));
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 6 && !program.commands.running(); }));
  EXPECT_EQ(fits().text(4, fit_column::model).substr(0, 8), "W5C/MLEc");
  const QAbstractItemModel& grid = *dynamic_cast<QTableView&>(widget("grd_Fit")).model();
  const QString tip = grid.index(1, fit_column::model).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.contains(QStringLiteral("9 suspensions are not in this likelihood")))
      << from_qt(tip);
}

TEST_F(MainJob, PasteTwoColumnsAndCopyTheNotation) {
  person.copy_elsewhere(QStringLiteral("150\t2\r\n>200\t5\r\n320.5\t1\r\n"));
  person.press({QStringLiteral("ctrl+v")});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->lrows == 3; }));
  EXPECT_EQ(sheet().text(1, sheet_column::fails), "2");
  EXPECT_EQ(sheet().text(2, sheet_column::susps), "5");
  person.press({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
  QString copied;
  wait_until([&] { return !(copied = person.paste_elsewhere()).contains(u'\t'); });
  EXPECT_EQ(copied, QStringLiteral("150x2\r\n>200x5\r\n320.5\r\n"));
}

// Keys of the sheet: what each does to the text and to the current cell.
TEST_F(MainJob, KeysOfTheSheet) {
  person.type(QStringLiteral("100x3\n"));
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 2; }));
  EXPECT_EQ(sheet().text(1, sheet_column::fails), "3");

  person.press({QStringLiteral("5"), QStringLiteral("0"), QStringLiteral("Right")});
  ASSERT_TRUE(wait_until([&] { return sheet().column() == sheet_column::y; }));
  EXPECT_EQ(sheet().text(2, sheet_column::x), "50");

  person.press({QStringLiteral("Left"), QStringLiteral("9"), QStringLiteral("Escape"),
                QStringLiteral("F2"), QStringLiteral("7"), QStringLiteral("Up")});
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 1; }));
  EXPECT_EQ(sheet().text(2, sheet_column::x), "507") << "Escape leaves, F2 goes on";

  person.press({QStringLiteral("shift+Down"), QStringLiteral("Delete")});
  ASSERT_TRUE(wait_until([&] { return sheet().text(2, sheet_column::x).empty(); }));
  EXPECT_EQ(sheet().text(1, sheet_column::x), "");
  EXPECT_EQ(sheet().text(1, sheet_column::fails), "3") << "only the selection is emptied";

  person.press({QStringLiteral("ctrl+End"), QStringLiteral("Home")});
  person.type(QStringLiteral("8\n"));
  ASSERT_TRUE(wait_until([&] { return sheet().row() == DataSheet::least_rows + 1; }));
  EXPECT_EQ(sheet().text(DataSheet::least_rows + 1, sheet_column::order),
            std::to_string(DataSheet::least_rows + 1));
}

}  // namespace

}  // namespace tavlo
