// The library, by real keys and clicks.
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>

#include "actions/intake.h"
#include "gui/window_world.h"
#include "workspace/guidance/library_window.h"
#include "workspace/guidance/row_form.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {
namespace {

using test::wait_until;

struct LibraryWindowTest : test::WindowWorld {
  void SetUp() override {
    test::WindowWorld::SetUp();
    session().places.IniPath = path("");
    write("QMWbLibDef.txt",
          "[Library Header File]\n[library files]\n1\nrows.csv\n[column definition]\n3\n"
          "Device\n3\n1\nSeal\nTypical\n0\n1\nChance Typical value\nCause\n1\n2\nwear\nrust\n");
    write("rows.csv", "Pump,\"1,000\",wear\nGear,20,rust\nPump seal,30,wear\n");
    write("QMWLib.ini", path("").c_str());
  }

  void open() {
    person.press({"alt+f", "b"});
    ASSERT_TRUE(wait_until([&] {
      library = window.findChild<LibraryWindow*>();
      return library && library->isActiveWindow();
    }));
  }

  std::string path(const char* name) { return from_qt(folder.filePath(to_qt(name))); }

  void write(const char* name, const char* text) {
    session().ports.file_system.write_whole(path(name), text);
  }

  std::string read(const char* name) {
    std::string bytes;
    session().ports.file_system.read_whole(path(name), std::uint64_t{1} << 20, bytes);
    return bytes;
  }

  template <class Widget>
  Widget& part(const char* name) {
    return *library->findChild<Widget*>(QString::fromUtf8(name));
  }

  void click(const char* name) { person.click(part<QPushButton>(name)); }

  void show_fields() {
    const QTabBar& tabs = *part<QTabWidget>("tab_Lib").tabBar();
    person.click(tabs, tabs.tabRect(1).center());
    ASSERT_TRUE(wait_until([&] { return part<QListWidget>("lst_Fields").isVisible(); }));
    person.click(part<QListWidget>("lst_Fields"), {20, 8});  // the page has its layout then
  }

  bool shows(const char* found) {
    return wait_until([&] { return part<QLabel>("lbl_Found").text() == to_qt(found); });
  }

  const QTemporaryDir folder;
  LibraryWindow* library = nullptr;
};

TEST_F(LibraryWindowTest, FindsRowsAndCopiesThemWithTheirHeadings) {
  open();
  EXPECT_TRUE(shows("3 rows"));
  person.type("PUMP wear");
  EXPECT_TRUE(shows("2 of 3 rows"));
  auto& table = part<QTableView>("grd_Lib");
  EXPECT_EQ(table.model()->headerData(1, Qt::Vertical).toString(), QStringLiteral("Row 3"));
  person.click(*table.viewport(), {20, 8});
  person.press({"ctrl+c"});
  EXPECT_TRUE(wait_until([&] {
    return person.paste_elsewhere() == "Device\tTypical\tCause\r\nPump\t1,000\twear\r\n";
  })) << person.paste_elsewhere().toStdString();
  person.press({"Escape"});
  EXPECT_TRUE(wait_until([&] { return !library->isVisible(); }));
  EXPECT_TRUE(boxes.texts().isEmpty());
}

TEST_F(LibraryWindowTest, SavesFieldsThatThePersonChanges) {
  open();
  show_fields();
  auto& names = part<QListWidget>("lst_Fields");
  click("imgField1");
  click("imgField2");
  person.type("Plant");
  person.click(part<QPlainTextEdit>("txt_FieldData"));
  person.type("North\n\nSouth ");
  person.click(part<QSpinBox>("txt_Order"), {20, 8});
  person.press({"ctrl+a"});
  person.type("1\n");
  ASSERT_TRUE(wait_until([&] { return names.item(0)->text() == QStringLiteral("1  Plant"); }));
  auto& notes = part<QLabel>("lbl_Notes");
  EXPECT_TRUE(notes.text().contains(QStringLiteral("Row 1 has 3 fields; the library has 4")));
  click("imgField1");
  click("imgField3");
  EXPECT_TRUE(wait_until([&] { return notes.isHidden(); }));
  click("imgBtn1");
  click("imgBtn2");
  EXPECT_TRUE(wait_until([&] { return boxes.texts().size() == 2; }));
  EXPECT_EQ(boxes.texts().join(u'|'),
            QStringLiteral("Image 1 not programmed|Btn 2:Copy to clipboard-not programmed"));
  click("imgField4");
  EXPECT_TRUE(wait_until([&] { return read("QMWbLibDef.txt~").size() > 0; }));
  EXPECT_EQ(
      read("QMWbLibDef.txt"),
      "[Library Header File]\r\n[library files]\r\n1\r\nrows.csv\r\n[column definition]\r\n"
      "3\r\nPlant\r\n2\r\n2\r\nNorth\r\nSouth\r\nTypical\r\n0\r\n1\r\nChance Typical value\r\n"
      "Cause\r\n1\r\n2\r\nwear\r\nrust\r\n[end library header file]\r\n");
  boxes.press_on_boxes("Escape");
  click("imgField3");
  person.press({"Escape"});
  EXPECT_TRUE(wait_until([&] { return boxes.texts().size() == 3; }));
  EXPECT_TRUE(library->isVisible()) << "what is not saved was asked about";
}

TEST_F(LibraryWindowTest, AddsARowFromThePresentAnalysis) {
  program.commands.run([&] {
    for (int i = 1; i <= 6; ++i) sheet().enter(i, sheet_column::x, std::to_string(100 * i));
    CheckAndFit(session(), 1);
  });
  open();
  click("cmd_NewRow");
  RowForm* form = nullptr;
  ASSERT_TRUE(wait_until([&] {
    form = library->findChild<RowForm*>();
    return form && form->isActiveWindow();
  }));
  const auto field = [&](const char* name) { return form->findChild<QWidget*>(to_qt(name)); };
  auto& device = *qobject_cast<QComboBox*>(field("fld_Row0"));
  EXPECT_EQ(device.count(), 5) << "blank, the list, and what the data file has";
  person.click(device, {20, 8});
  person.type("Valve, \"big\"");
  auto& cause = *qobject_cast<QComboBox*>(field("fld_Row2"));
  EXPECT_FALSE(cause.isEditable());
  cause.setFocus();
  person.type("r");
  const std::string typical = from_qt(qobject_cast<QLineEdit*>(field("fld_Row1"))->text());
  EXPECT_FALSE(typical.empty());
  person.click(*form->findChild<QPushButton*>(QStringLiteral("cmd_AddRow")));
  EXPECT_TRUE(shows("4 rows"));
  EXPECT_TRUE(
      read("rows.csv").ends_with("seal,30,wear\n\"Valve, \"\"big\"\"\"," + typical + ",rust\n"))
      << read("rows.csv");
}

TEST_F(LibraryWindowTest, MakesALibraryOfItsOwn) {
  write("QMWLib.ini", "");
  open();
  EXPECT_TRUE(shows("No data file is open"));
  answer_files_with(to_qt(path("new.csv")));
  boxes.answer_in_turn({{QStringLiteral("alt+y")}, {QStringLiteral("alt+n")}});
  click("cmd_OpenData");
  EXPECT_TRUE(shows("0 rows"));
  EXPECT_EQ(boxes.texts().size(), 2);
  show_fields();
  answer_files_with(to_qt(path("QMWbLibDefMine.txt")));
  click("imgField4");
  EXPECT_TRUE(wait_until([&] { return !read("QMWbLibDefMine.txt").empty(); }));
  EXPECT_EQ(read("QMWLib.ini"), path("").substr(0, path("").size()) + "\r\n");
}

}  // namespace
}  // namespace tavlo
