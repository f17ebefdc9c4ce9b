// The ways of a chart out of the window: to the clipboard and to a file.
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>

#include "chart/compose/make_chart.h"
#include "chart/metafile/metafile_writer.h"
#include "gui/window_world.h"
#include "workspace/chart/picture_dialog.h"

namespace tavlo {

namespace {

using test::wait_until;

class ChartExits : public test::WindowWorld {
 protected:
  ChartWindow& chart() { return window.windows().chart(1); }

  /// With room for the names of Greek letters, which the window shows themselves.
  QByteArray metafile() {
    return QByteArray::fromStdString(metafile_bytes(make_metafile_drawing(session(), 1)));
  }

  QString news() { return window.findChild<QLabel*>(QStringLiteral("lbl_News"))->text(); }

  QString proposed;

  /// Chooses the chart's "Save As..." and answers its dialogs, which hold the
  /// program until they are closed.
  void save_as(const QString& name, std::function<void(PictureDialog&)> choose = {}) {
    answer<QFileDialog>([=, this](QFileDialog& dialog) {
      proposed = QFileInfo(dialog.selectedFiles().value(0)).filePath();
      if (choose) answer<PictureDialog>(choose);
      dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
      QMetaObject::invokeMethod(&dialog, "accept");
    });
    window.findChild<QAction*>(QStringLiteral("mnu_SaveChart"))->trigger();
  }
};

QByteArray content_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST_F(ChartExits, CopyOffersEveryFormToOtherPrograms) {
  person.click(chart());
  ASSERT_TRUE(wait_until([&] { return chart().hasFocus(); }));
  person.press({"ctrl+c"});
  const QString png = QStringLiteral("image/png");
  QByteArray names;
  ASSERT_TRUE(wait_until([&] {
    names = person.paste_elsewhere(QStringLiteral("TARGETS"));
    return names.contains("image/png");
  }));
  for (const char* name : {"image/wmf", "image/x-wmf",
                           "application/x-openoffice-wmf;windows_formatname=\"Image WMF\""}) {
    EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_EQ(person.paste_elsewhere(QString::fromUtf8(name)), metafile()) << name;
  }
  EXPECT_TRUE(person.paste_elsewhere(QStringLiteral("image/svg+xml")).contains("</svg>"));
  EXPECT_EQ(QImage::fromData(person.paste_elsewhere(png)).width(), 1920);
}

TEST_F(ChartExits, SaveAsWritesTheFormatOfTheName) {
  const QTemporaryDir folder;
  session().project.charts(1).Boxes(chart_item::x_title).Text2 = "\u03C3";
  save_as(folder.filePath(QStringLiteral("a")));
  EXPECT_EQ(content_of(folder.filePath(QStringLiteral("a.wmf"))), metafile());
  EXPECT_TRUE(news().startsWith(QStringLiteral("Saved a.wmf, "))) << news().toStdString();
  save_as(folder.filePath(QStringLiteral("b.png")), [](PictureDialog& dialog) { dialog.accept(); });
  const QImage image(folder.filePath(QStringLiteral("b.png")));
  EXPECT_EQ(image.size(), QSize(3000, 1800));
  EXPECT_EQ(image.dotsPerMeterX(), 11811);
  save_as(QStringLiteral("c"), [](PictureDialog& dialog) {
    dialog.findChild<QComboBox*>(QStringLiteral("cbo_Unit"))->setCurrentIndex(2);
    dialog.findChild<QDoubleSpinBox*>(QStringLiteral("txt_Width"))->setValue(640);
    dialog.findChild<QDoubleSpinBox*>(QStringLiteral("txt_Height"))->setValue(400);
    dialog.accept();
  });
  EXPECT_EQ(proposed, folder.filePath(QStringLiteral("Untitled.png"))) << "as the last one";
  EXPECT_EQ(QImage(folder.filePath(QStringLiteral("c.png"))).size(), QSize(640, 400));
  EXPECT_TRUE(news().startsWith(QStringLiteral("Saved c.png, 640 x 400 pixels, ")));
  save_as(folder.filePath(QStringLiteral("nowhere/e.png")),
          [](PictureDialog& dialog) { dialog.accept(); });
  EXPECT_EQ(boxes.texts().size(), 1) << boxes.texts().join(u'|').toStdString();
  save_as(folder.filePath(QStringLiteral("d.SVG")), [](PictureDialog& dialog) { dialog.accept(); });
  EXPECT_TRUE(content_of(folder.filePath(QStringLiteral("d.SVG"))).contains("</svg>"));
}

}  // namespace

}  // namespace tavlo
