// The format dialog, by keys: what it shows, keeps, gives back and refuses.
#include "workspace/format/format_dialog.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>

#include "gui/window_world.h"
#include "workspace/frame/command_table.h"

namespace tavlo {

namespace {

using test::wait_until;

QString key(const char* name) { return QString::fromUtf8(name); }

class FormatDialogTest : public test::WindowWorld {
 protected:
  void SetUp() override {
    WindowWorld::SetUp();
    before_ = chart();
    window.DoCommand(command::label_style);
    ASSERT_TRUE(wait_until([&] { return dialog() && dialog()->isActiveWindow(); }));
    turn_to(static_cast<int>(ChartPart::titles));
  }

  Chart& chart() { return session().project.charts(1); }
  Chart& copy() { return session().gChartNow; }
  QWidget* dialog() { return window.findChild<QWidget*>(key("frm_Format")); }

  void turn_to(int page) {
    dialog()->findChild<QListWidget*>(key("lst_Page"))->setCurrentRow(page);
  }

  /// Gives a field the keyboard and types over what stands there.
  void type_over(const char* field, const char* text) {
    QWidget& line = widget(field);
    line.setFocus();
    ASSERT_TRUE(wait_until([&] { return line.hasFocus(); })) << field;
    person.press({"ctrl+a", "Delete"});
    person.type(text);
    ASSERT_TRUE(wait_until([&] { return shown_in(field) == key(text); })) << field;
  }

  QString shown_in(const char* field) {
    return dialog()->findChild<QLineEdit*>(key(field))->text();
  }

  void close_with(const char* keys) {
    person.press({keys});
    ASSERT_TRUE(wait_until([&] { return !dialog(); }));
  }

  Chart before_;
};

TEST_F(FormatDialogTest, TitleSymbolAndColourAreSeenAtOnceAndKeptWithOk) {
  const QImage unchanged = widget("pic_Preview").grab().toImage();
  type_over("ttl_Main", "Bearings");
  ASSERT_TRUE(wait_until([&] { return copy().Boxes(chart_item::main_title).Text2 == "Bearings"; }));
  EXPECT_TRUE(wait_until([&] { return widget("pic_Preview").grab().toImage() != unchanged; }));
  turn_to(static_cast<int>(ChartPart::plot_sets));
  widget("opt_Symbol").setFocus();
  person.press({"Right", "Down"});
  ASSERT_TRUE(wait_until([&] { return copy().Markers(1).Symbol == 11; }));
  widget("set_LinePen").setFocus();
  person.press({"space"});
  ASSERT_TRUE(wait_until([&] { return window.findChild<QWidget*>(key("frm_Colour")); }));
  ASSERT_TRUE(wait_until([&] { return widget("frm_Colour").isActiveWindow(); }));
  person.click(widget("opt_Colour_7"));
  person.press({"alt+s", "Down", "Return"});
  ASSERT_TRUE(wait_until([&] { return copy().Markers(1).LineStyle == 1; }));
  EXPECT_EQ(copy().Markers(1).LineColor, rgb(255, 0, 0));
  EXPECT_EQ(chart(), before_) << "the chart itself waits for the OK";
  const int compositions = window.windows().chart(1).compositions();
  close_with("Return");
  EXPECT_EQ(chart().Boxes(chart_item::main_title).Text2, "Bearings");
  EXPECT_EQ(chart().Markers(1).Symbol, 11);
  EXPECT_EQ(window.windows().chart(1).compositions(), compositions + 1);
}

TEST_F(FormatDialogTest, LimitsNeedTheirFlagOffAndTheirOrder) {
  turn_to(static_cast<int>(ChartPart::x_axis));
  EXPECT_FALSE(widget("axx_Max").isEnabled());
  for (const char* flag : {"axx_Max_Auto", "axx_Min_Auto"}) {
    widget(flag).setFocus();
    person.press({"space"});
  }
  ASSERT_TRUE(wait_until([&] { return widget("axx_Min").isEnabled(); }));
  type_over("axx_Max", "250");
  type_over("axx_Min", "500");
  ASSERT_TRUE(wait_until([&] { return copy().Axes(0).Min == 500; }));
  person.press({"Return"});
  ASSERT_TRUE(wait_until([&] { return boxes.texts().size() == 1; }));
  ASSERT_TRUE(wait_until([&] { return dialog()->isActiveWindow(); }));
  type_over("axx_Min", "2%");
  ASSERT_TRUE(wait_until([&] { return copy().Axes(0).Min == 0.02; }));
  turn_to(static_cast<int>(ChartPart::y_axis));
  EXPECT_EQ(copy().Axes(1).Label.Int4, limit_rule::fit_to_data);
  widget("axy_Limits").setFocus();
  person.press({"Down"});
  ASSERT_TRUE(wait_until([&] { return copy().Axes(1).Label.Int4 == limit_rule::stated; }));
  close_with("Return");
  EXPECT_EQ(chart().Axes(1).Label.Int4, limit_rule::stated);
  EXPECT_EQ(chart().Axes(0).Min, 0.02);
  EXPECT_EQ(chart().Axes(0).Max, 250);
  EXPECT_FALSE(chart().Axes(0).AutoMax);
}

TEST_F(FormatDialogTest, NoNumberIsToldAndTheDialogStays) {
  const QString words = key("Please Check for invalid data.  Then try again.");
  qsizetype told = 0;
  for (const auto& [page, field, wrong] : {std::tuple{ChartPart::boxes, "cht_Width", "wide"},
                                           {ChartPart::plot_sets, "set_Size", "1e9"},
                                           {ChartPart::titles, "ttl_Main_Size", ""}}) {
    turn_to(static_cast<int>(page));
    const QString good = shown_in(field);
    type_over(field, wrong);
    turn_to(static_cast<int>(ChartPart::notes));
    person.press({"Return"});
    ASSERT_TRUE(wait_until([&] { return boxes.texts().size() == told + 1; })) << field;
    EXPECT_EQ(boxes.texts()[told++], words);
    ASSERT_TRUE(wait_until([&] { return dialog() && widget(field).hasFocus(); }))
        << "the fault is shown, " << field;
    type_over(field, qPrintable(good));
  }
  EXPECT_EQ(chart(), before_);
  close_with("Return");
}

TEST_F(FormatDialogTest, ProfileIsSavedAndLoaded) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(key("looks.vpr"));
  type_over("ttl_X", "Hours");
  const int profile = static_cast<int>(ChartPart::notes) + 1;
  turn_to(profile);
  answer_files_with(path);
  person.click(widget("cmd_Save"));
  ASSERT_TRUE(wait_until([&] { return QFile::exists(path); }));
  ASSERT_TRUE(wait_until([&] { return dialog()->isActiveWindow(); }));
  turn_to(static_cast<int>(ChartPart::titles));
  type_over("ttl_X", "Miles");
  turn_to(profile);
  answer_files_with(path);
  person.click(widget("cmd_Load"));
  ASSERT_TRUE(wait_until([&] { return copy().Boxes(chart_item::x_title).Text2 == "Hours"; }));
  EXPECT_EQ(shown_in("ttl_X"), key("Hours"));
  EXPECT_EQ(copy().UniqueId, before_.UniqueId);
  close_with("Escape");
  EXPECT_EQ(chart(), before_);
}

}  // namespace

}  // namespace tavlo
