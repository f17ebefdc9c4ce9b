// A person sets the options and imports a file, by keys.
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QUrl>

#include "actions/shown_fits.h"
#include "gui/window_world.h"
#include "workspace/frame/command_table.h"

namespace tavlo {
namespace {

using test::wait_until;

class DialogsByKeys : public test::WindowWorld {
 protected:
  QString shown_rank() { return window.windows().sheet(1).model()->index(0, 1).data().toString(); }
  QString shown_text(const char* name) { return widget(name).property("text").toString(); }
  QWidget* dialog(const char* name) { return window.findChild<QWidget*>(QString::fromUtf8(name)); }
  bool is_open(const char* name) { return dialog(name) && dialog(name)->isActiveWindow(); }
  void ask_for(std::initializer_list<const char*> keys, const char* name) {
    person.press(keys);
    ASSERT_TRUE(wait_until([&] { return is_open(name); })) << name;
  }
  void close_with(const char* key, const char* name) {
    person.press({key});
    ASSERT_TRUE(wait_until([&] { return !dialog(name) && window.isActiveWindow(); })) << name;
  }

  void toggle(const char* key, const char* name) {
    const bool before = widget(name).property("checked").toBool();
    person.press({key});
    ASSERT_TRUE(wait_until([&] { return widget(name).property("checked").toBool() != before; }));
  }

  /// By keys: the list above the column opens, and the first letters choose.
  void choose_column(int place, const char* letters) {
    auto& list =
        static_cast<QComboBox&>(widget(qPrintable(QStringLiteral("cbo_Column_%1").arg(place))));
    list.setFocus();
    ASSERT_TRUE(wait_until([&] { return list.hasFocus(); }));
    const QString before = list.currentText();
    person.type(letters);
    ASSERT_TRUE(wait_until([&] { return list.currentText() != before; })) << letters;
  }
  std::string write(const QTemporaryDir& folder, const char* name, const char* text) {
    QFile file(folder.filePath(QString::fromUtf8(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
    return file.fileName().toStdString();
  }
};

TEST_F(DialogsByKeys, OptionsActAtOnceAndCancelChangesNothing) {
  person.type("100\n200\n300\n");
  person.press({"alt+c"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 2; }));
  ASSERT_EQ(shown_rank().size(), 7) << "five decimals";
  const Settings before = session().settings;
  ask_for({"alt+f", "l"}, "frm_Options");
  person.move_to(widget("lbl_Options"), {5, 5});
  EXPECT_TRUE(wait_until([&] { return shown_text("lbl_Options").startsWith(u"Hold Mouse over"); }));
  person.press({"alt+d", "8"});
  ASSERT_TRUE(wait_until([&] { return shown_text("txt_Digits_0") == QStringLiteral("8"); }));
  toggle("alt+b", "chk_Fit_0");
  EXPECT_TRUE(shown_text("lbl_Options").contains(u"(j-0.3)/(n+0.4)"));
  close_with("Escape", "frm_Options");
  EXPECT_EQ(session().settings.DigitsData, before.DigitsData);
  EXPECT_TRUE(session().settings.Benard);
  EXPECT_EQ(shown_rank().size(), 7);

  ask_for({"alt+f", "l"}, "frm_Options");
  person.press({"alt+d", "minus", "8", "alt+p", "4", "0"});
  toggle("alt+i", "chk_Opt_0");
  toggle("alt+a", "chk_Opt_2");
  close_with("Return", "frm_Options");
  EXPECT_EQ(session().settings.DigitsParBox, 15);
  EXPECT_TRUE(wait_until([&] { return shown_rank().size() == 10; })) << shown_rank().toStdString();
  EXPECT_FALSE(widget("dock_Project").isVisible() || window.statusBar()->isVisible());
  const QTemporaryDir program_folder;
  write(program_folder, "vkl07 Deutsch.TXT", "\n\n\n");
  session().places.ProgramPath = program_folder.path().toStdString();
  ask_for({"alt+f", "l"}, "frm_Options");
  toggle("alt+i", "chk_Opt_0");
  toggle("alt+a", "chk_Opt_2");
  toggle("alt+b", "chk_Fit_0");
  dialog("frm_Options")->resize(250, 150);  // as on a small screen
  person.press({"alt+n", "End"});
  ASSERT_TRUE(wait_until([&] {
    return widget("cbo_Language").property("currentText") == QStringLiteral("7: vkl07 Deutsch");
  }));
  for (const char* each : {"cbo_Language", "cmd_OK"})
    EXPECT_TRUE(wait_until([&] { return !widget(each).visibleRegion().isEmpty(); })) << each;
  EXPECT_LT(dialog("frm_Options")->height(), 200);
  close_with("Return", "frm_Options");
  EXPECT_EQ(session().settings.Language, 7);
  EXPECT_TRUE(widget("dock_Project").isVisible() && window.statusBar()->isVisible());
  EXPECT_TRUE(wait_until([&] { return !session().project.data(1).is_read(); })) << "other ranks";
}

TEST_F(DialogsByKeys, ModelsAreComparedInTheLogAndTakenBack) {
  type_handbook_example();
  const std::string before = log();
  ask_for({"alt+a", "d"}, "frm_Dist");
  EXPECT_TRUE(widget("opt_Meth_0").property("checked").toBool());
  toggle("alt+m", "opt_Meth_1");
  EXPECT_FALSE(widget("chk_Model_7").isEnabled()) << "the base";
  EXPECT_FALSE(widget("chk_Model_12").isEnabled()) << "which nothing fits";
  toggle("alt+t", "chk_Model_8");
  toggle("alt+4", "chk_Model_10");
  close_with("Return", "frm_Dist");
  ASSERT_TRUE(wait_until([&] { return log().find("LR Test") != std::string::npos; }));
  EXPECT_TRUE(wait_until([&] { return window.windows().active_block() == Block::log; }));
  EXPECT_NE(log().find("No other model could be tested"), std::string::npos) << log();
  EXPECT_EQ(followed_fit(session(), 1), 1) << "the chart shows the best, not the last";
  EXPECT_EQ(window.windows().panel(1).grid().currentIndex().row(), 0);
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return log() == before; })) << log();
  EXPECT_EQ(session().project.fits(1).nFits, 0);
}

TEST_F(DialogsByKeys, ASampleIsDrawnFittedAndRunAndTakenBack) {
  type_handbook_example();
  const int rows = sheet().last_row();
  ask_for({"alt+o", "s"}, "frm_MC");
  person.press({"alt+f", "alt+n", "ctrl+a"});
  person.type("50");
  person.press({"alt+i", "alt+n", "Return"});
  ASSERT_TRUE(wait_until([&] { return session().project.charts.bound() == 3; }));
  EXPECT_TRUE(wait_until([&] { return widget("cmd_Sample").isEnabled(); }));
  EXPECT_EQ(sheet().last_row(), 30);
  EXPECT_EQ(fits().text(1, fit_column::quality), "given");
  EXPECT_NE(log().find("Monte Carlo Runs: 50 runs"), std::string::npos) << log();
  person.press({"Escape"});
  ASSERT_TRUE(wait_until([&] { return window.isActiveWindow(); }));
  EXPECT_EQ(window.windows().active_block(), Block::chart);
  window.open_child({Block::chart, 3});
  EXPECT_GT(window.windows().chart(3).drawing().records.size(), 100U) << "a row a run";
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return sheet().last_row() == rows; }));
  EXPECT_EQ(session().project.charts.bound(), 1);
}

TEST_F(DialogsByKeys, AForeignTableIsImportedByChoosingItsColumnsAndTakenBack) {
  const QTemporaryDir folder;
  const std::string path = write(folder, "Pumpen.csv",
                                 "Gerät;Laufzeit;Zustand;Anzahl\n"
                                 "A1;1000,5;defekt;2\n"
                                 "A2;20,25;läuft;1\n");
  answer_files_with(QString::fromStdString(path));
  ask_for({"alt+f", "i"}, "frm_Import");
  EXPECT_FALSE(widget("cmd_Import").isEnabled());
  choose_column(1, "ti");
  EXPECT_EQ(shown_text("lbl_Result"), QStringLiteral("2 rows: 2 failures, 0 suspensions."));
  choose_column(2, "st");
  EXPECT_TRUE(shown_text("lbl_Result").startsWith(u"Line 2:"));
  EXPECT_FALSE(widget("cmd_Import").isEnabled());
  person.press({"alt+f"});
  person.type("defekt");
  choose_column(3, "co");
  const auto& rows = static_cast<QTableWidget&>(widget("tbl_Rows"));
  EXPECT_EQ(rows.item(1, 0)->text(), QStringLiteral("1000.5x2"));
  EXPECT_EQ(rows.item(2, 0)->text(), QStringLiteral(">20.25"));
  close_with("Return", "frm_Import");
  EXPECT_EQ(session().project.data(1).Title, "Pumpen");
  EXPECT_EQ(sheet().text(1, sheet_column::x) + sheet().text(2, sheet_column::susps), "1000.51");
  // Its project is offered its name, and what is saved as a project is one.
  const QString saved = folder.filePath(QStringLiteral("a.txt.tavlo"));
  answer<QFileDialog>([&](QFileDialog& save) {
    auto* name = save.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    save.selectNameFilter(save.nameFilters().last());
    EXPECT_EQ(name->text(), QStringLiteral("Pumpen.tavlo"));
    save.selectNameFilter(save.nameFilters().first());
    name->setText(folder.filePath(QStringLiteral("a.txt")));
    QMetaObject::invokeMethod(&save, "accept");
  });
  person.press({"ctrl+s"});
  EXPECT_TRUE(wait_until([&] { return QFile::exists(saved); }));
  person.press({"ctrl+z"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 0; }));
  EXPECT_EQ(session().project.data(1).Title, "Data1");
}

// Data are imported, behind those that are there; a project is opened.
TEST_F(DialogsByKeys, AFileDroppedOntoTheFrameIsImportedOrOpened) {
  const QTemporaryDir folder;
  const auto drop = [&](const std::string& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QDropEvent end(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QApplication::sendEvent(&window, &end);
    return enter.isAccepted() && end.isAccepted();
  };
  person.type("7\n");
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 1; }));
  ASSERT_TRUE(drop(write(folder, "more.txt", "100x3\n>50\n")));
  ASSERT_TRUE(wait_until([&] { return is_open("frm_Import"); }));
  close_with("Return", "frm_Import");
  ASSERT_EQ(session().project.data.bound(), 2);
  EXPECT_EQ(session().project.data(2).Title, "more");
  EXPECT_TRUE(wait_until([&] { return window.windows().sheet(2).hasFocus(); }));
  ASSERT_TRUE(drop(write(folder, "broken.tavlo", "TAVLO 1.5 alpha\nx\n")));
  ASSERT_TRUE(wait_until([&] { return boxes.texts().size() == 1; }));
  EXPECT_TRUE(boxes.texts()[0].contains(u"broken.tavlo"));
  EXPECT_EQ(session().project.data.bound(), 2);
}

}  // namespace
}  // namespace tavlo
