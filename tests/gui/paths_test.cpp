// The main paths from data to an answer in somebody else's hands, each as a person goes it,
// with a picture of each step. They run on small and large screens and at scale 2.
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QProcess>
#include <QTableWidget>
#include <QTemporaryDir>

#include "actions/recovery.h"
#include "fit/door/fit.h"
#include "gui/pictures.h"
#include "gui/window_world.h"
#include "numerics/number_text.h"
#include "workspace/chart/picture_dialog.h"
#include "workspace/frame/command_table.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

using test::wait_until;

class MainPaths : public test::WindowWorld {
 protected:
  /// One picture of the whole frame, or of the dialog in front, that a person could work with.
  void see(const char* step) {
    QApplication::processEvents();
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget& front = dialog ? *dialog : window;
    EXPECT_EQ(from_qt(test::nameless_in(front)), "") << step;
    // A caption that has just changed gets its room in the next turn of the events.
    EXPECT_TRUE(wait_until([&] { return test::cut_in(front).isEmpty(); }))
        << step << ": " << from_qt(test::cut_in(front));
    const QRect screen = front.screen()->availableGeometry();
    EXPECT_LE(front.frameGeometry().width(), screen.width() + 1) << step;  // half pixels
    EXPECT_LE(front.frameGeometry().height(), screen.height() + 1) << step;
    test::keep_picture(front, QString::fromUtf8(step));
    if (QWidget* menu = QApplication::activePopupWidget())
      test::keep_picture(*menu, QString::fromUtf8(step) + QStringLiteral("-menu"));
  }
  void wait_for_fits(int count) {
    ASSERT_TRUE(wait_until([&] {
      return session().project.fits(1).nFits == count && !program.commands.running();
    })) << count;
  }
  /// The grid shows what the fit of the same data gives.
  void expect_sure_fit(int slot) {
    const FitResult& fit = session().project.fits(1).Fits(slot);
    Companion nobody;
    const FitAnswer answer = tavlo::fit(session().project.data(1).sample(), fit.request, nobody);
    ASSERT_TRUE(answer.fit());
    EXPECT_NEAR(fit.Quality, answer.fit()->quality, 1e-12 * std::abs(fit.Quality));
    int row = 1;
    while (fits().text(row, fit_column::number) != std::to_string(slot)) ++row;
    const auto shown = parse_number(fits().text(row, fit_column::quality));
    EXPECT_NEAR(shown.value_or(-1), fit.Quality, 1e-5 * std::abs(fit.Quality));
  }
  static QByteArray bytes_of(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  static QByteArray text_of_pdf(const QString& name) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {name, QStringLiteral("-")});
    return reader.waitForFinished() ? reader.readAllStandardOutput() : QByteArray();
  }

  const QTemporaryDir folder;
};

TEST_F(MainPaths, TypedTimesAreFittedAndComparedAndSaved) {
  see("1-start");
  type_handbook_example();
  see("2-typed");
  person.click(widget("opt_Method_1"), {8, 8});
  wait_for_fits(1);
  EXPECT_EQ(fits().text(1, fit_column::scale).substr(0, 5), "606.5") << "the published answer";
  expect_sure_fit(1);
  see("3-fitted");

  person.press({"alt+a", "d"});
  ASSERT_TRUE(wait_until([&] { return QApplication::activeModalWidget() != nullptr; }));
  see("4-compare");
  person.press({"Return"});
  ASSERT_TRUE(wait_until([&] {
    return log().find("Distribution Analysis for") != std::string::npos &&
           !program.commands.running();
  }));
  person.press({"ctrl+f"});
  person.type("winner\n");
  see("5-compared");
  person.press({"Escape"});
  const int count = session().project.fits(1).nFits;

  const QString name = folder.filePath(QStringLiteral("pumps.tavlo"));
  answer_files_with(name);
  person.press({"ctrl+s"});
  ASSERT_TRUE(wait_until([&] { return QFile::exists(name); }));
  const auto grid = [&] {
    std::string cells;
    for (int row = 0; row < fits().rows(); ++row)
      for (int column = 0; column < fits().columns(); ++column)
        cells += fits().text(row, column) + '\t';
    return cells;
  };
  const std::string saved = grid();
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return session().project.fits(1).nFits == 0; }));
  answer_files_with(name);
  person.press({"ctrl+o"});
  wait_for_fits(count);
  EXPECT_EQ(sheet().last_row(), 11);
  EXPECT_EQ(grid(), saved);
  EXPECT_TRUE(chart_has_fit_line());
  see("6-reopened");
}

TEST_F(MainPaths, APastedTableIsFittedReadMarkedAndSavedAsAPicture) {
  std::string table = "Hours\tStatus\r\n";
  for (int i = 1; i <= 60; ++i)
    table += std::to_string(i <= 20 ? 3 * i + i % 4 : 500 + 12 * i + i % 7) + ",5\t" +
             (i % 10 == 0 ? "S" : "F") + "\r\n";
  person.copy_elsewhere(table);
  person.click(*window.windows().sheet(1).viewport(), {20, 10});
  person.press({"ctrl+v"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 60; }));
  see("11-pasted");
  person.press({"alt+2"});
  wait_for_fits(1);
  person.press({"alt+4"});
  wait_for_fits(2);
  expect_sure_fit(1);
  expect_sure_fit(2);
  see("12-mixture");
  auto& lives = static_cast<QTableWidget&>(widget("grd_Life"));
  lives.scrollToItem(lives.item(2, 2));
  person.click(*lives.viewport(), lives.visualItemRect(lives.item(2, 2)).center());
  ASSERT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 1; }));
  person.press({"ctrl+3", "ctrl+g"});
  person.type("20%\n");
  ASSERT_TRUE(wait_until([&] { return widget("cmd_MarkAnswer").isEnabled(); }));
  see("13-asked");
  person.press({"alt+m"});
  ASSERT_TRUE(wait_until([&] { return session().project.charts(1).nTexts == 2; }));
  person.turn_wheel(window.windows().chart(1), window.windows().chart(1).rect().center(), true);
  ASSERT_TRUE(wait_until([&] { return !session().project.charts(1).Axes(0).AutoMax; }));
  see("14-zoomed");
  const QString name = folder.filePath(QStringLiteral("chart.png"));
  answer_files_with(name);
  answer<PictureDialog>([&](PictureDialog& dialog) {
    see("15-size");
    dialog.accept();
  });
  window.DoCommand(command::save_chart);
  EXPECT_TRUE(wait_until([&] { return QImage(name).width() > 500; }));
  const auto said = [&] {
    std::string words;
    for (const drawing::Record& record : window.windows().chart(1).drawing().records)
      if (const auto* text = std::get_if<drawing::Text>(&record))
        if (text->utf8.find(" = ") != std::string::npos && text->utf8.starts_with("B"))
          words += text->utf8 + "; ";
    return words;
  };
  const std::string marked = said();
  EXPECT_NE(marked.find("B50 = "), std::string::npos) << marked;
  EXPECT_NE(marked.find("B20 = "), std::string::npos) << marked;
  const QString project = folder.filePath(QStringLiteral("marked.tavlo"));
  answer_files_with(project);
  person.press({"ctrl+s"});
  ASSERT_TRUE(wait_until([&] { return QFile::exists(project); }));
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 0; }));
  answer_files_with(project);
  person.press({"ctrl+o"});
  wait_for_fits(2);
  EXPECT_TRUE(wait_until([&] { return said() == marked; })) << said();
}

/// Types into another running program, has the work replaced, and ends the program by force.
void crash(test::Person& person, const QWidget& other, const QString& folder) {
  QProcess program;
  QProcessEnvironment world = QProcessEnvironment::systemEnvironment();
  world.insert(QStringLiteral("XDG_CONFIG_HOME"), folder);
  program.setProcessEnvironment(world);
  program.start(QStringLiteral(TAVLO_PROGRAM), {});
  ASSERT_TRUE(wait_until([&] { return !other.isActiveWindow(); }));
  const QDir copies(folder + QStringLiteral("/Quellmarch/Recovery"));
  // A program that is still starting hears no key: the work is begun again until it is there.
  const auto has_copy = [&] {
    person.type("54\n187\n216\n240\n244\n335\n361\n373\n375\n386\n>500x10\n");
    person.press({"alt+2", "ctrl+n"});
    return wait_until([&] { return !copies.entryList(QDir::Files).isEmpty(); }, 3000);
  };
  ASSERT_TRUE(has_copy() || has_copy() || has_copy());
  program.kill();
  program.waitForFinished();
}

TEST_F(MainPaths, WorkIsRecoveredAndReported) {
  ASSERT_NO_FATAL_FAILURE(crash(person, window, folder.path()));
  ASSERT_TRUE(wait_until([&] { return window.isActiveWindow(); }));
  begin_recovery(session(), from_qt(folder.filePath(QStringLiteral("Quellmarch/Recovery"))));
  person.press({"alt+f", "c"});
  QMenu* menu = nullptr;
  ASSERT_TRUE(wait_until([&] {
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    return menu && menu->title().remove(u'&') == u"Recover";
  })) << (menu ? from_qt(menu->title()) : "no menu");
  see("21-recover");
  person.press({"Return"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 11 && !program.commands.running(); }));
  expect_sure_fit(1);
  see("22-recovered");
  for (const char* type : {"pdf", "html"}) {
    const QString name = folder.filePath(QStringLiteral("report.") + to_qt(type));
    answer_files_with(name);
    person.press({"alt+f", "r"});
    ASSERT_TRUE(wait_until([&] { return QFile::exists(name) && !program.commands.running(); }));
    const bool is_pdf = std::string_view(type) == "pdf";
    const QByteArray report = is_pdf ? text_of_pdf(name) : bytes_of(name);
    EXPECT_TRUE(bytes_of(name).trimmed().endsWith(is_pdf ? "%%EOF" : "</html>"));
    for (const char* said : {"B10 life", "150.83", "= 602", "1.63", "Time to failure"})
      EXPECT_TRUE(report.contains(said)) << said << " in " << type;
  }
  see("23-reported");
  EXPECT_EQ(boxes.texts().size(), 0) << from_qt(boxes.texts().join(u'|'));
}

}  // namespace

}  // namespace tavlo
