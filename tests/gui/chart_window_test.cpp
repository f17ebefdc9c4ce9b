// Somebody works on the chart with mouse and keys.
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QToolBar>
#include <cmath>

#include "chart/parts/legend.h"
#include "chart/parts/movable_boxes.h"
#include "chart/scales/chart_view.h"
#include "gui/window_world.h"
#include "project/fit_records.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

using drawing::Place;
using test::wait_until;

class OnTheChart : public test::WindowWorld {
 protected:
  void SetUp() override {
    WindowWorld::SetUp();
    type_handbook_example();
    person.press({"alt+c"});
    ASSERT_TRUE(wait_until([&] { return chart_has_fit_line() && !program.commands.running(); }));
    record().Boxes(chart_item::legend).Mode = legend_mode::always;
    record().Markers(1).Label = "Bearings";
    program.commands.run([] {});
    person.press({"ctrl+3"});
    ASSERT_TRUE(wait_until([&] { return chart().hasFocus(); }));
  }

  ChartWindow& chart() { return window.windows().chart(1); }
  Chart& record() { return session().project.charts(1); }
  void open_menu(QPoint at) {
    person.ask_for_menu(chart(), at);
    ASSERT_TRUE(wait_until([&] { return QApplication::activePopupWidget() != nullptr; }));
  }
  void take_zoom() {
    person.press({"alt+o", "z"});
    ASSERT_TRUE(wait_until([&] { return chart().tool() == ChartTool::zoom; }));
  }
  QAction& action(const char* name) { return *window.findChild<QAction*>(QString::fromUtf8(name)); }
  QString hint() { return window.findChild<QLabel*>(QStringLiteral("lbl_Tip"))->text(); }
  QPoint pixel(Place place) { return chart().stage().pixel(place).toPoint(); }
  QPoint in_plot(double right, double down) {
    const QRectF plot = chart().stage().plot_area();
    return QPointF(plot.x() + right * plot.width(), plot.y() + down * plot.height()).toPoint();
  }
  void press(const char* key) { person.press({key}); }
  /// The events of the person's acts are through when a key after them is.
  void catch_up() {
    const bool was = chart().is_precise();
    person.press({"alt+o", "p"});
    ASSERT_TRUE(wait_until([&] { return chart().is_precise() != was; }));
    person.press({"alt+o", "p"});
    ASSERT_TRUE(wait_until([&] { return chart().is_precise() == was; }));
  }
  QPoint middle_of(int item) {
    for (const ItemArea& each : chart().drawing().areas)
      if (each.item == item) return chart().stage().area(each.area).center().toPoint();
    ADD_FAILURE() << "no item " << item;
    return {};
  }
};

TEST_F(OnTheChart, ZoomsInStepByStepAndBackExactly) {
  const Slots<ChartAxis> before = record().Axes;
  take_zoom();
  EXPECT_TRUE(action("mnu_33").isChecked());

  person.drag(chart(), {in_plot(0.25, 0.25), in_plot(0.4, 0.5), in_plot(0.75, 0.75)});
  ASSERT_TRUE(wait_until([&] { return record().Axes != before; }));
  const Slots<ChartAxis> first = record().Axes;
  EXPECT_FALSE(first(0).AutoMin || first(0).AutoMax || first(1).AutoMin || first(1).AutoMax);
  EXPECT_NEAR(std::log(first(0).Max / first(0).Min) / std::log(before(0).Max / before(0).Min), 0.5,
              0.01);
  // From the lower right to the upper left, and beyond the plot.
  person.drag(chart(), {in_plot(0.6, 0.6), in_plot(0.3, 0.3), in_plot(-0.05, -0.05)});
  ASSERT_TRUE(wait_until([&] { return record().Axes != first; }));
  EXPECT_EQ(record().Axes(0).Min, first(0).Min);
  EXPECT_EQ(record().Axes(1).Max, first(1).Max);

  press("BackSpace");
  ASSERT_TRUE(wait_until([&] { return record().Axes == first; }));
  press("minus");
  EXPECT_TRUE(wait_until([&] { return record().Axes == before; }));

  press("plus");
  ASSERT_TRUE(wait_until([&] { return zoom_depth(record()) == 1; }));
  person.press({"alt+o", "z"});
  EXPECT_TRUE(wait_until([&] { return record().Axes == before; })) << "off: back to the first view";
  EXPECT_EQ(boxes.texts(), QStringList());
}

TEST_F(OnTheChart, TheLookOfTheToolBarIsThatOfNewChartsToo) {
  const Slots<ChartAxis> before = record().Axes;
  const auto* bar = chart().parentWidget()->findChild<QToolBar*>(QStringLiteral("bar_Look"));
  ASSERT_NE(bar, nullptr);
  const auto click_on = [&](const QString& look) {
    for (QAction* const entry : bar->actions()) {
      if (entry->objectName() != QStringLiteral("mnu_Look_") + look) continue;
      person.click(*bar->widgetForAction(entry));
      ASSERT_TRUE(wait_until([&] { return entry->isChecked(); }));
    }
    EXPECT_EQ(to_qt(record().Profile), look);
  };
  click_on(QStringLiteral("Report"));
  EXPECT_EQ(record().Axes(0).Max, before(0).Max);
  EXPECT_EQ(record().Markers(1).Label, "Bearings");
  EXPECT_EQ(session().settings.ChartType, "Report");
  EXPECT_TRUE(chart_has_fit_line());
  click_on(QStringLiteral("Standard"));
  EXPECT_EQ(record().Axes, before);
  EXPECT_EQ(boxes.texts(), QStringList());
}

TEST_F(OnTheChart, SlipsAndEscapeLeaveTheViewAsItIs) {
  const Slots<ChartAxis> before = record().Axes;
  take_zoom();
  const QPoint at = in_plot(0.5, 0.5);
  person.drag(chart(), {at, at + QPoint(4, 60)});
  person.hold(chart(), at);
  person.move_to(chart(), at + QPoint(80, 80));
  press("Escape");
  person.let_go();
  catch_up();
  EXPECT_EQ(record().Axes, before);
  EXPECT_EQ(chart().tool(), ChartTool::zoom) << "the drag alone was given up";
  press("Escape");
  EXPECT_TRUE(wait_until([&] { return chart().tool() == ChartTool::pointer; }));
  EXPECT_FALSE(action("mnu_33").isChecked());
  const int compositions = chart().compositions(), width = chart().width();
  window.showNormal();
  window.resize(700, 500);
  EXPECT_TRUE(wait_until([&] { return chart().width() != width; }));
  EXPECT_EQ(chart().compositions(), compositions) << "another size composes nothing";
}

TEST_F(OnTheChart, ReadsWhatIsUnderThePointer) {
  const ChartAxis& x = record().Axes(0);
  QPoint at = in_plot(0.4, 0.1);
  while (chart().stage().read(chart().stage().place(at), false)->snapped != SnappedTo::nothing)
    at += QPoint(3, 2);  // off the lines of the grid
  person.move_to(chart(), at);
  ASSERT_TRUE(wait_until([&] { return hint().startsWith(QStringLiteral("X = ")); }));
  const QRectF plot = chart().stage().plot_area();
  const double expected = x.Min * std::pow(x.Max / x.Min, (at.x() - plot.x()) / plot.width());
  EXPECT_NEAR(hint().section(u' ', 2, 2).toDouble(), expected, 2e-3 * expected)
      << hint().toStdString();
  EXPECT_TRUE(hint().contains(QStringLiteral("Fit:  F = ")));

  person.press({"alt+o", "p"});
  const Sample& sample = session().project.data(1).sample();
  const auto rank = static_cast<double>(sample.rank[1]);
  std::vector<DataPair> pairs = {{outer_time(sample, sample.time[1]), rank}};
  std::vector<Place> places(1);
  xy2Long(session().errors, session().ports.prompts, record().Boxes(1), record().Axes(0),
          record().Axes(1), places, pairs);
  const QPoint on_point = pixel(places[0]);
  person.move_to(chart(), on_point + QPoint(4, 3));
  const auto wanted = QStringLiteral("Point:  X = 187   Y = %1%").arg(100.0 * rank, 0, 'g', 7);
  EXPECT_TRUE(wait_until([&] { return hint().startsWith(wanted); }))
      << hint().toStdString() << wanted.toStdString();
  const QImage seen = chart().grab().toImage();
  const double scale = seen.devicePixelRatio();
  const QPointF above = scale * QPointF(chart().stage().pixel(places[0]).x(), plot.top() + 9);
  const QColor hair = seen.pixelColor(above.toPoint() - QPoint(above.x() < above.toPoint().x(), 0));
  EXPECT_GT(hair.red(), hair.blue() + 60) << "a hair cross stands on the point";

  press("shift+Right");
  EXPECT_TRUE(wait_until([&] { return !hint().startsWith(QStringLiteral("Point")); }));
  person.move_to(window.windows().sheet(1), {40, 40});
  EXPECT_TRUE(wait_until([&] { return !hint().contains(QStringLiteral("Fit:")); }));
}

TEST_F(OnTheChart, APointSelectsItsRowAndARowRingsItsPoint) {
  const std::int32_t id = session().project.data(1).UniqueId;
  const auto point_of = [&](int row) {
    return pixel(chart().stage().readout().place_of_row(id, row).value());
  };
  person.click(chart(), point_of(5));
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 5; }));
  EXPECT_TRUE(hint().contains(QStringLiteral("1 failure, row 5"))) << hint().toStdString();
  EXPECT_TRUE(chart().hasFocus()) << "the person goes on with the chart";

  person.press({"ctrl+1", "Down"});
  ASSERT_TRUE(
      wait_until([&] { return chart().chosen_point() && chart().chosen_point()->row == 6; }));
  person.move_to(chart(), in_plot(0.02, 0.05));
  ASSERT_TRUE(wait_until([&] { return !hint().startsWith(QStringLiteral("Point")); }));
  const QImage seen = chart().grab().toImage();
  const double scale = seen.devicePixelRatio();
  bool has_ring = false;
  for (const int radius : {8, 9, 10}) {
    const QPointF at = scale * QPointF(point_of(6) - QPoint(radius, 0));
    const QColor ring = seen.pixelColor(at.toPoint());
    has_ring = has_ring || ring.blue() > ring.red() + 60;
  }
  EXPECT_TRUE(has_ring);

  person.type("777\n");  // not what the chart shows any more
  person.press({"ctrl+3"});
  ASSERT_TRUE(wait_until([&] { return chart().hasFocus(); }));
  person.click(chart(), point_of(6));
  const auto* news = window.findChild<QLabel*>(QStringLiteral("lbl_News"));
  EXPECT_TRUE(wait_until([&] { return news->text().startsWith(QStringLiteral("The rows have")); }));
  EXPECT_EQ(sheet().row(), 7);
}

TEST_F(OnTheChart, ATypedPercentageIsAnsweredCopiedAndMarked) {
  const FitResult& fit = session().project.fits(1).Fits(1);
  const QString b10 = QStringLiteral("B10 = %1").arg(*quantile(life_of(fit), 0.1), 0, 'g', 7);
  person.press({"1", "0", "percent", "Return"});
  ASSERT_TRUE(wait_until([&] { return hint().startsWith(b10); })) << hint().toStdString();
  press("Return");
  ASSERT_TRUE(wait_until([&] { return hint() == QStringLiteral("The answers are copied."); }));
  EXPECT_TRUE(person.paste_elsewhere().startsWith(b10.toUtf8()));
  person.press({"BackSpace", "x", "Return"});
  EXPECT_TRUE(wait_until([&] { return hint().contains(QStringLiteral("is no percentage")); }));
  person.press({"BackSpace", "percent", "Return", "alt+m"});
  ASSERT_TRUE(wait_until([&] { return record().nTexts == 1; }));
  chart().stage().compose();
  const ChartItem& mark = chart().stage().answered().Texts(1);
  const QString marked = to_qt(mark.Text2);
  EXPECT_TRUE(marked.startsWith(b10.left(9))) << from_qt(marked);
  EXPECT_EQ(mark.nPoints, 2);
  EXPECT_TRUE(wait_until([&] { return chart().hasFocus(); }));

  // Other letters for its words leave it an answer.
  person.click(chart(), pixel({mark.Left + 40, mark.Top + 40}));
  ASSERT_TRUE(wait_until([&] { return chart().selected().is_mark(); }));
  answer<QDialog>([this](QDialog& dialog) {
    auto& size = *dialog.findChild<QLineEdit*>(QStringLiteral("txt_MarkSize"));
    size.selectAll();
    size.insert(QStringLiteral("18"));
    dialog.accept();
  });
  action("mnu_EditMark").trigger();
  ASSERT_TRUE(wait_until([&] { return record().Texts(1).FontSize == 18; }));
  EXPECT_EQ(to_qt(chart().stage().answered().Texts(1).Text2), marked);

  // What was asked is answered again when there is a fit again.
  person.press({"ctrl+3", "1", "0", "percent", "Return"});
  ASSERT_TRUE(wait_until([&] { return hint().startsWith(b10); }));
  program.commands.run([&] { sheet().enter(1, sheet_column::x, "40"); });
  ASSERT_TRUE(wait_until([&] { return hint().startsWith(QStringLiteral("The fits are out")); }));
  window.DoCommand(101);
  EXPECT_TRUE(wait_until([&] { return hint().startsWith(QStringLiteral("B10 = ")); }));
  EXPECT_FALSE(hint().startsWith(b10));
}

TEST_F(OnTheChart, TheWheelIsOneStepOfTheZoomAndNoneOfUndo) {
  const Slots<ChartAxis> before = record().Axes;
  const std::string undoes = window.history().undo_name();
  const QPoint at = in_plot(0.25, 0.6);
  const Place place = chart().stage().place(at);
  const auto x_there = [&] {
    return AxisMap::x(session().errors, record().Boxes(1), record().Axes(0)).read(place.x);
  };
  const double x = x_there();
  for (int i = 0; i < 4; ++i) person.turn_wheel(chart(), at, true);
  ASSERT_TRUE(wait_until([&] { return record().Axes(0).Max < before(0).Max / 1.5; }));
  EXPECT_NEAR(x_there(), x, 1e-9 * x);
  EXPECT_EQ(zoom_depth(record()), 1u);
  const double top = record().Axes(1).Max;
  person.turn_wheel(chart(), in_plot(0.5, 1.03), false);  // over the labels of the X axis
  catch_up();
  EXPECT_EQ(record().Axes(1).Max, top);
  EXPECT_EQ(window.history().undo_name(), undoes);
  person.press({"ctrl+3", "BackSpace"});
  EXPECT_TRUE(wait_until([&] { return record().Axes == before; }));
}

TEST_F(OnTheChart, DraggedBoxesStayWhereTheyWerePut) {
  for (const int item : {chart_item::legend, chart_item::parameter_box}) {
    const QPoint from = middle_of(item);
    const int before = chart().compositions();
    person.drag(chart(), {from, from + QPoint(-20, -10), from + QPoint(-50, -30)});
    ASSERT_TRUE(wait_until([&] { return has_own_place(record(), item); }));
    catch_up();
    EXPECT_LE(chart().compositions() - before, 2) << "one for each event at most";
    EXPECT_LE((middle_of(item) - from - QPoint(-50, -30)).manhattanLength(), 2);
    const ChartItem put = record().Boxes(item);
    person.hold(chart(), from + QPoint(-50, -30));
    person.move_to(chart(), from + QPoint(-70, -60));
    ASSERT_TRUE(wait_until([&] { return record().Boxes(item) != put; }));
    press("Escape");
    EXPECT_TRUE(wait_until([&] { return record().Boxes(item) == put; })) << "Escape takes it back";
    person.let_go();

    open_menu(from + QPoint(-50, -30));
    press("o");
    EXPECT_TRUE(wait_until([&] { return !has_own_place(record(), item); }));
  }
}

TEST_F(OnTheChart, AddsMovesAndDeletesMarks) {
  const QPoint at = in_plot(0.3, 0.2);
  open_menu(at);
  person.press({"m", "t"});
  ASSERT_TRUE(wait_until([&] { return chart().tool() == ChartTool::text; }));
  answer<QInputDialog>([](QInputDialog& dialog) {
    dialog.setTextValue(QStringLiteral("wear-out"));
    dialog.accept();
  });
  person.click(chart(), at);
  ASSERT_TRUE(wait_until([&] { return record().nTexts == 1 && !program.commands.running(); }));
  EXPECT_EQ(record().Texts(1).Text2, "wear-out");
  EXPECT_LE((pixel({record().Texts(1).Left, record().Texts(1).Top}) - at).manhattanLength(), 2);

  action("mnu_AddArrow").trigger();
  person.drag(chart(), {in_plot(0.7, 0.3), in_plot(0.6, 0.3), in_plot(0.5, 0.4)});
  ASSERT_TRUE(wait_until([&] { return record().nTexts == 2; }));
  EXPECT_EQ(kind_of_mark(record().Texts(2)), MarkKind::arrow);
  EXPECT_EQ(chart().tool(), ChartTool::pointer);
  const ChartItem arrow = record().Texts(2);
  person.drag(chart(), {in_plot(0.6, 0.35), in_plot(0.62, 0.4), in_plot(0.6, 0.45)});
  ASSERT_TRUE(wait_until([&] { return record().Texts(2) != arrow; }));
  EXPECT_EQ(record().Texts(2).PointsX(0) - arrow.PointsX(0),
            record().Texts(2).PointsX(1) - arrow.PointsX(1));
  press("Delete");
  ASSERT_TRUE(wait_until([&] { return record().nTexts == 1; }));
  EXPECT_EQ(record().Texts(1).Text2, "wear-out");
}

}  // namespace

}  // namespace tavlo
