// The main job: typed or pasted times become a fitted line.
#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTableView>
#include <QTemporaryDir>

#include "actions/save_project.h"
#include "gui/window_world.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

using test::wait_until;

class MainJob : public test::WindowWorld {
 protected:
  /// Pastes lines by a click and Ctrl+V; the sheet then has that many rows.
  void paste(const std::string& lines, int rows) {
    person.copy_elsewhere(lines);
    person.click(*window.windows().sheet(1).viewport(), {20, 10});
    person.press({"ctrl+v"});
    ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->last_row() == rows; }));
  }
  void choose(const char* button, int fits_then) {
    person.click(widget(button), {8, 8});
    ASSERT_TRUE(wait_until([&] {
      return fits().rows() == fits_then + 1 && !program.commands.running();
    })) << button;
  }
};

/// Twenty early times and forty late ones.
std::string two_populations() {
  std::string times;
  for (int i = 1; i <= 60; ++i)
    times += std::to_string(i <= 20 ? 3 * i + i % 4 : 500 + 12 * i + i % 7) + '\n';
  return times;
}

double number(const Grid& grid, int row, int column) {
  return parse_number(grid.text(row, column)).value_or(-1);
}

// The e-Handbook's maximum likelihood answer: eta 606.528, beta 1.7208.
TEST_F(MainJob, KeyboardAlone) {
  EXPECT_FALSE(chart_has_fit_line());
  type_handbook_example();
  person.press({"ctrl+2", "shift+Tab", "Down"});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->nMethod == method_code::mle; }));
  person.press({"ctrl+1", "alt+c"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() > 1 && !program.commands.running(); }));

  EXPECT_EQ(fits().text(1, fit_column::model), "W/MLE");
  EXPECT_NEAR(number(fits(), 1, fit_column::scale), 606.528, 0.01);
  EXPECT_NEAR(number(fits(), 1, fit_column::shape), 1.7208, 0.001);
  EXPECT_NEAR(number(fits(), 1, fit_column::quality), -75.1346, 0.001);
  EXPECT_NE(log().find("********** Tavlo Fit ********** "), std::string::npos) << log();
  EXPECT_TRUE(wait_until(
      [&] { return window.windows().log().toPlainText().contains(QStringLiteral("606.52")); }));
  EXPECT_TRUE(chart_has_fit_line());
  EXPECT_EQ(boxes.texts(), QStringList());

  person.press({"ctrl+4", "ctrl+a", "ctrl+c"});
  EXPECT_TRUE(person.paste_elsewhere().contains("Tavlo Fit")) << "from the log";
}

// A letter underlined in the panel is heard from every window, and is no letter of a menu.
TEST_F(MainJob, KeysOfThePanelWorkEverywhere) {
  paste("100\n150\n210\n300\n", 4);
  boxes.answer_questions({});
  int fit = 0;
  for (const auto& [window_key, key, name] : {std::tuple{"ctrl+2", "alt+c", "W/rr"},
                                              {"ctrl+2", "alt+x", "E/rr"},
                                              {"ctrl+1", "alt+n", "N/rr"},
                                              {"ctrl+3", "alt+l", "LN/rr"},
                                              {"ctrl+4", "alt+g", "G-/rr"}}) {
    person.press({window_key, key});
    ASSERT_TRUE(wait_until([&] { return fits().rows() == fit + 2; })) << key;
    EXPECT_EQ(fits().text(++fit, fit_column::model), name);
  }
  person.press({"ctrl+2", "alt+e"});
  ASSERT_TRUE(wait_until([&] { return QApplication::activePopupWidget() != nullptr; }));
  EXPECT_EQ(dynamic_cast<QMenu*>(QApplication::activePopupWidget())->title(),
            QStringLiteral("&Edit"));
  person.press({"Escape", "Escape"});
}

// On the way to a model nobody wants the fits of those between.
TEST_F(MainJob, ArrowsChooseAndSpaceOrEnterCalculates) {
  paste("100\n150\n210\n300\n", 4);
  const FitPanel& panel = *session().gFitForm(1);
  person.press({"ctrl+2", "shift+Tab", "Down", "Down"});
  ASSERT_TRUE(wait_until([&] { return panel.nMethod == method_code::y_on_x; }));
  person.press({"shift+Tab", "shift+Tab", "Down", "Right"});
  ASSERT_TRUE(wait_until([&] { return panel.nModel == model_code::lognormal; })) << panel.nModel;
  EXPECT_EQ(fits().rows(), 1);
  person.press({"space"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 2 && !program.commands.running(); }));
  EXPECT_EQ(fits().text(1, fit_column::model), "LN/rrs");
  person.press({"Left", "Return"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 3 && !program.commands.running(); }));
  EXPECT_EQ(fits().text(2, fit_column::model), "N/rrs");
}

TEST_F(MainJob, MouseAlone) {
  paste("100\t1\r\n>200\t5\r\n300.5\t1\r\n", 3);
  person.press({"ctrl+a", "ctrl+c"});
  const QByteArray notation = "100\r\n>200x5\r\n300.5\r\n";
  EXPECT_TRUE(wait_until([&] { return person.paste_elsewhere() == notation; }));
  person.click_twice(widget("btn_Fit"));
  ASSERT_TRUE(wait_until([&] { return fits().rows() > 1 && !program.commands.running(); }));
  EXPECT_EQ(log().find("Tavlo Fit"), log().rfind("Tavlo Fit")) << "one entry for one fit";
  choose("opt_Method_2", 2);
  EXPECT_EQ(fits().text(2, fit_column::model), "W/rrs");
  EXPECT_TRUE(chart_has_fit_line());

  const QAbstractItemModel& grid = *dynamic_cast<QTableView&>(widget("grd_Fit")).model();
  const auto tip = [&] { return from_qt(grid.index(0, 1).data(Qt::ToolTipRole).toString()); };
  EXPECT_EQ(tip(), "");
  person.press({"ctrl+1"});
  person.type("7\n");
  EXPECT_TRUE(wait_until([&] {
    return tip() ==
           "Out of date: The data, or how they are ranked, have changed since this fit was made.";
  })) << tip();
  person.click(widget("btn_Fit"));
  EXPECT_TRUE(wait_until([&] { return tip().empty() && !program.commands.running(); }));
}

// Print by Ctrl+P into a file: its text, as another program reads it.
TEST_F(MainJob, PrintsAllRowsAsText) {
  std::string times;
  for (int i = 1; i <= 200; ++i) times += std::to_string(1000 + 7 * i) + '\n';
  paste(times, 200);
  const QTemporaryDir folder;
  const auto file_of = [&](const char* window_key) {
    const QString name = folder.filePath(QString::fromUtf8(window_key));
    answer<QPrintDialog>([&](QPrintDialog& dialog) {
      dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
      dialog.printer()->setOutputFileName(name);
      dialog.done(QDialog::Accepted);
    });
    person.press({window_key, "ctrl+p"});
    EXPECT_TRUE(wait_until([&] { return QFile(name).size() > 0 && !program.commands.running(); }));
    return name;
  };
  const auto printed = [&](const char* window_key) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"),
                 {QStringLiteral("-layout"), file_of(window_key), QStringLiteral("-")});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput());
  };
  const QString sheet_text = printed("ctrl+1");
  const QStringList pages = sheet_text.split(u'\f', Qt::SkipEmptyParts);
  EXPECT_GE(pages.size(), 3);
  for (const QString& page : pages) {
    EXPECT_TRUE(page.contains(QStringLiteral("of %1").arg(pages.size()))) << from_qt(page);
    EXPECT_TRUE(page.contains(QStringLiteral("Data X"))) << from_qt(page);
  }
  const QStringList words = sheet_text.simplified().split(u' ');
  for (int i = 1; i <= 200; ++i) EXPECT_TRUE(words.contains(QString::number(1000 + 7 * i))) << i;

  choose("opt_Model_2", 1);
  const QString fit_text = printed("ctrl+2");
  EXPECT_TRUE(fit_text.contains(QStringLiteral("W/rr"))) << from_qt(fit_text);
  EXPECT_TRUE(fit_text.contains(to_qt(fits().text(1, fit_column::scale)))) << from_qt(fit_text);
  const QString log_text = printed("ctrl+4");
  EXPECT_TRUE(log_text.contains(QRegularExpression(QStringLiteral("eta:.*beta: *[0-9]"))))
      << "columns stand side by side\n"
      << from_qt(log_text);
  for (const char* part : {"Tavlo Fit", "PVE", "Page 1 of 1"})
    EXPECT_TRUE(log_text.contains(QString::fromUtf8(part))) << from_qt(log_text);

  QFile chart(file_of("ctrl+3"));
  ASSERT_TRUE(chart.open(QIODevice::ReadOnly));
  const QByteArray pdf = chart.readAll();
  const QByteArray page = pdf.mid(pdf.indexOf("/MediaBox [") + 11, 60);
  const QList<QByteArray> box = page.left(page.indexOf(']')).simplified().split(' ');
  EXPECT_GT(box.value(3).toDouble(), 500) << page.constData();
  EXPECT_GT(box.value(2).toDouble(), box.value(3).toDouble()) << "on a lying page";
}

// A click on each model adds its fit; the question for a slope takes its offer
// or what is typed.
TEST_F(MainJob, EveryClassicalModelByAClick) {
  paste("100\n150\n210\n300\n>400\n", 5);
  const auto keys = [](const char* list) { return QString::fromUtf8(list).split(u' '); };
  int fit = 0;
  for (const auto& [option, name] : {std::pair{"opt_Model_8", "N/rr"},
                                     {"opt_Model_9", "LN/rr"},
                                     {"opt_Model_10", "G-/rr"},
                                     {"opt_Model_11", "G+/rr"},
                                     {"opt_Model_12", "E/rr"},
                                     {"opt_Model_14", "Wb/rr"}}) {
    if (fit == 4) boxes.answer_questions({});
    if (fit == 5)
      boxes.answer_in_turn({keys("3 space c m"), keys("1 e 3 0 8"), keys("2 period 5")});
    choose(option, ++fit);
    EXPECT_EQ(fits().text(fit, fit_column::model), name);
    EXPECT_TRUE(chart_has_fit_line()) << name;
  }
  EXPECT_EQ(number(fits(), fit, fit_column::shape), 2.5);
  ASSERT_EQ(boxes.texts().size(), 4);
  EXPECT_TRUE(boxes.texts()[1].startsWith(QStringLiteral("Please enter the Weibull Slope")));
  EXPECT_TRUE(boxes.texts()[2].startsWith(
      QStringLiteral("'3 cm' is no slope: it takes one number from 0.000001 to 1000000.")));
  EXPECT_TRUE(boxes.texts()[3].startsWith(QStringLiteral("'1e308' is no slope")));
  boxes.answer_questions({"1"});
  person.click(widget("opt_Model_14"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->nModel == model_code::exponential; }));
  EXPECT_TRUE(dynamic_cast<const QAbstractButton&>(widget("opt_Model_12")).isChecked());
  // A slope without an option of its own is that of the Weibayes, from a file too.
  boxes.answer_questions({"2"});
  person.click(widget("opt_Model_14"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->nModel == model_code::rayleigh; }));
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("r.tavlo")).toStdString();
  ASSERT_TRUE(save_project_as(session(), path));
  window.NewProject();
  window.files().open_path(path);
  EXPECT_TRUE(wait_until([&] { return widget("opt_Model_14").property("checked").toBool(); }));
  EXPECT_EQ(fits().text(0, fit_column::scale), "mu, Med, Xi, eta");
}

// What is to be known beside the numbers stays in sight, wherever the mouse goes.
TEST_F(MainJob, AMixtureShowsItsPopulationsAndHowSureItIs) {
  paste(two_populations() + ">1500x9\n", 61);
  const auto& hint = dynamic_cast<const QLabel&>(widget("lbl_Tip"));
  const auto& news = dynamic_cast<const QLabel&>(widget("lbl_News"));
  EXPECT_EQ(news.text(), QStringLiteral("61 rows: 60 failures, 9 suspensions"));
  EXPECT_FALSE(widget("chk_Censored").isEnabled()) << "regression has no such choice";
  choose("opt_Method_1", 1);
  choose("opt_Model_5", 3);
  EXPECT_EQ(fits().text(2, fit_column::model), "W5C/MLE *");
  EXPECT_EQ(fits().text(3, fit_column::sub_population), "1,2");
  const QString remark = news.text();
  EXPECT_TRUE(remark.contains(QStringLiteral("starts ended at this optimum"))) << from_qt(remark);
  EXPECT_TRUE(remark.contains(QStringLiteral("9 suspensions left out"))) << from_qt(remark);
  EXPECT_TRUE(chart_has_fit_line());

  for (const QPoint& at : {QPoint(20, 40), QPoint(100, 60)})
    person.move_to(*window.windows().sheet(1).viewport(), at);
  ASSERT_TRUE(wait_until([&] { return hint.text().startsWith(QStringLiteral("Data")); }));
  person.move_to(window.windows().chart(1), {200, 150});
  ASSERT_TRUE(wait_until([&] { return !hint.text().startsWith(QStringLiteral("Data")); }));
  choose("btn_Fit", 3);
  EXPECT_EQ(news.text(), remark) << "the same fit has the same notes";
  const QAbstractItemModel& grid = *dynamic_cast<QTableView&>(widget("grd_Fit")).model();
  const QString tip = grid.index(1, fit_column::model).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.contains(QStringLiteral("9 suspensions left out of this likelihood")))
      << from_qt(tip);

  person.click(widget("chk_Censored"), {8, 8});
  ASSERT_TRUE(wait_until([&] { return session().gFitForm(1)->censored; }));
  EXPECT_EQ(fits().rows(), 4) << "a switch changes no fit";
  choose("btn_Fit", 5);
  EXPECT_EQ(fits().text(4, fit_column::model).substr(0, 8), "W5C/MLEc");
  choose("opt_Method_0", 7);
  choose("opt_Model_9", 8);
  EXPECT_EQ(news.text(), QStringLiteral("Ready"));
  person.press({"ctrl+1"});
  person.type("7\n");
  choose("opt_Model_5", 8);
  EXPECT_TRUE(news.text().contains(QStringLiteral("starts ended"))) << "of the fit that is shown";
}

// Keys of the sheet: what each does to the text and to the current cell.
TEST_F(MainJob, KeysOfTheSheet) {
  person.type("100x3\n");
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 2; }));
  EXPECT_EQ(sheet().text(1, sheet_column::fails), "3");

  person.press({"5", "0", "Right"});
  ASSERT_TRUE(wait_until([&] { return sheet().column() == sheet_column::y; }));
  EXPECT_EQ(sheet().text(2, sheet_column::x), "50");

  person.press({"Left", "9", "Escape", "F2", "7", "Up"});
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 1; }));
  EXPECT_EQ(sheet().text(2, sheet_column::x), "507") << "Escape leaves, F2 goes on";

  person.press({"shift+Down", "Delete"});
  ASSERT_TRUE(wait_until([&] { return sheet().text(2, sheet_column::x).empty(); }));
  EXPECT_EQ(sheet().text(1, sheet_column::x), "");
  EXPECT_EQ(sheet().text(1, sheet_column::fails), "3") << "only the selection is emptied";

  person.press({"ctrl+Down"});
  person.type("8\n");
  ASSERT_TRUE(wait_until([&] { return sheet().row() == DataSheet::least_rows + 1; }));
  EXPECT_EQ(sheet().text(DataSheet::least_rows + 1, sheet_column::order),
            std::to_string(DataSheet::least_rows + 1));
}

}  // namespace

}  // namespace tavlo
