// The program starts, ends, and starts again where it was.
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include "files/language_file.h"
#include "gui/window_world.h"
#include "workspace/qt/own_store.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {
namespace {

using test::wait_until;

QStringList all_captions(const Program& program, MainWindow& window) {
  QStringList captions;
  for (const QAction* action : window.findChildren<QAction*>()) captions << action->text();
  captions << window.findChild<QAbstractButton*>(QStringLiteral("btn_Fit"))->text();
  captions << to_qt(button_caption(program.session.LanguageText, language_text::working));
  return captions;
}

TEST(LanguageOfTheFrame, EachTextStandsSomewhereAndTheSampleHasTheBuiltInWords) {
  Program plain, sample, numbered;
  DiskFiles files;
  sample.session.LanguageText = LoadLanguage(files, TAVLO_EXAMPLES, 1);
  EXPECT_EQ(sample.session.LanguageText[58], "&About");
  for (std::size_t i = 1; i < language_texts; ++i)
    numbered.session.LanguageText[i] = "#" + std::to_string(i);
  MainWindow plain_window(plain), sample_window(sample), numbered_window(numbered);
  EXPECT_EQ(all_captions(sample, sample_window), all_captions(plain, plain_window));
  const QStringList numbers = all_captions(numbered, numbered_window);
  for (std::size_t i = 1; i < language_texts; ++i)
    EXPECT_TRUE(numbers.contains(QStringLiteral("#%1").arg(i))) << i;
}

class FrameAgain : public testing::Test {
 protected:
  /// A frame that is shown as last time, `act`, and its end.
  void run(const std::function<void(MainWindow&)>& act) {
    Program program;
    program.session.places = {folder.path().toStdString(), "/program", "/temp"};
    program.session.settings = settings;
    MainWindow window(program);
    window.show_as_last_time();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    act(window);
    ASSERT_TRUE(window.close());
    settings = program.session.settings;
  }
  QString store() const { return folder.filePath(QStringLiteral("windows.ini")); }

  QTemporaryDir folder;
  Settings settings;
};

TEST_F(FrameAgain, StandsWhereItStoodWithItsBarsAndWindows) {
  QSize size;
  QVariantMap places;
  run([&](MainWindow& window) {
    window.showNormal();
    window.resize(1000, 640);
    ASSERT_TRUE(wait_until([&] { return window.width() == 1000 && window.height() == 640; }));
    window.windows().tile(true);
    window.findChild<QDockWidget*>(QStringLiteral("dock_Project"))->hide();
    QApplication::processEvents();
    size = window.size();
    places = window.windows().places();
    EXPECT_EQ(places.size(), 4);
  });
  EXPECT_FALSE(settings.ProjectTree);
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("QMV.ini"))));
  run([&](MainWindow& window) {
    EXPECT_TRUE(wait_until([&] { return window.size() == size; }))
        << window.width() << "x" << window.height();
    EXPECT_FALSE(window.findChild<QDockWidget*>(QStringLiteral("dock_Project"))->isVisible());
    const QVariantMap now = window.windows().places();
    for (const QString& key : places.keys()) {
      const QRectF was = places[key].toRectF(), is = now[key].toRectF();
      EXPECT_NEAR(was.x(), is.x(), 0.01) << qPrintable(key);
      EXPECT_NEAR(was.width(), is.width(), 0.01) << qPrintable(key);
    }
  });
}

TEST_F(FrameAgain, AsksOfALifeWhatItAskedBefore) {
  run([](MainWindow& window) {
    auto& answers = *window.findChild<QTableWidget*>(QStringLiteral("grd_Life"));
    for (const auto& [name, typed] : {std::pair{"txt_Percent", "0.1"}, {"txt_Time", "250"}}) {
      auto& field = *window.findChild<QLineEdit*>(QString::fromUtf8(name));
      field.setText(QString::fromUtf8(typed));
      QTest::keyClick(&field, Qt::Key_Return);
    }
    for (int i = 0; i < 3; ++i) {
      answers.setCurrentCell(1, 0);
      QTest::keyClick(&answers, Qt::Key_Delete);
    }
    EXPECT_EQ(answers.rowCount(), 3);
  });
  run([](MainWindow& window) {
    auto& answers = *window.findChild<QTableWidget*>(QStringLiteral("grd_Life"));
    ASSERT_EQ(answers.rowCount(), 3) << "and the mean";
    EXPECT_EQ(answers.item(0, 0)->text(), QStringLiteral("B0.1"));
    EXPECT_EQ(answers.item(1, 0)->text(), QStringLiteral("R(250)"));
  });
}

/// Where a frame of 800 x 500 stood on a screen that is gone, in the toolkit's own form.
QByteArray place_on_a_lost_monitor(qint32 screen_width) {
  const QRect place(6000, 4000, 800, 500);
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(QDataStream::Qt_4_0);
  stream << quint32{0x1D9D0CB} << quint16{3} << quint16{0} << place << place << qint32{3}
         << quint8{0} << quint8{0} << screen_width << place;
  return bytes;
}

TEST_F(FrameAgain, NoMonitorThatWasLostAndNoDamageHidesIt) {
  const auto is_seen = [](MainWindow& window) {
    const QRect seen = window.frameGeometry() & window.screen()->availableGeometry();
    EXPECT_GT(seen.width(), 400);
    EXPECT_GT(seen.height(), 300);
  };
  for (const qint32 screen_width : {QApplication::primaryScreen()->geometry().width(), 10000}) {
    QSettings lost(store(), QSettings::IniFormat);
    lost.setValue(store_key::geometry, place_on_a_lost_monitor(screen_width));
    lost.setValue(store_key::windows,
                  QVariantMap{{QStringLiteral("D1"), QRectF(7, 7, 1, 1)},
                              {QStringLiteral("C1"), QStringLiteral("nowhere")}});
    lost.sync();
    run(is_seen);
  }
  for (const QByteArray& bytes : {QByteArray(100000, '\xFF'), QByteArray("[frame]\ngeometry=1")}) {
    QFile file(store());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    file.close();
    run(is_seen);
  }
}

// The real program in a fresh folder: it starts, ends by its key, and leaves its settings;
// a command line that names nothing ends after its box.
TEST(RealStart, LeavesItsSettingsInAFreshFolder) {
  QTemporaryDir folder;
  QProcess tavlo;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.filePath(QStringLiteral("new")));
  environment.insert(QStringLiteral("TMPDIR"), folder.path());
  environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
  tavlo.setProcessEnvironment(environment);
  const QDir settings(folder.filePath(QStringLiteral("new/Quellmarch")));
  const auto ends_by = [&](const char* key, const QStringList& words) {
    tavlo.start(QStringLiteral(TAVLO_PROGRAM), words);
    // A key that comes before the window is lost.
    for (int i = 0; i < 100 && !tavlo.waitForFinished(200); ++i)
      QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QString::fromUtf8(key)});
    return tavlo.state() == QProcess::NotRunning ? tavlo.exitCode() : -1;
  };
  EXPECT_EQ(ends_by("ctrl+q", {}), 0);
  EXPECT_EQ(settings.entryList(QDir::Files),
            QStringList({QStringLiteral("QMPaths.txt"), QStringLiteral("QMV.ini"),
                         QStringLiteral("windows.ini")}));
  EXPECT_EQ(ends_by("Return", {QStringLiteral("-c"), folder.path()}), 1);
  QFile macro(folder.filePath(QStringLiteral("long.vkm")));
  ASSERT_TRUE(macro.open(QIODevice::WriteOnly));
  const QString results = folder.filePath(QStringLiteral("r.txt"));
  const QString data = QStringLiteral(TAVLO_EXAMPLES "/bathtub.txt");
  for (int i = 0; i < 5000; ++i)
    macro.write(QStringLiteral("7,1,2,%1,%2\n").arg(data, results).toUtf8());
  macro.close();
  EXPECT_EQ(ends_by("alt+b", {macro.fileName()}), 130) << "the break of a macro";
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("r.txt"))));
  EXPECT_EQ(ends_by("Return", {QStringLiteral("--version")}), 0);
  EXPECT_TRUE(tavlo.readAllStandardOutput().startsWith("tavlo "));
  tavlo.kill();
  tavlo.waitForFinished();
}

}  // namespace
}  // namespace tavlo
