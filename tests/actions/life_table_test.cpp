#include "actions/life_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "actions/life_marks.h"
#include "actions/undo.h"
#include "chart/compose/answer_marks.h"
#include "chart/parts/marks.h"
#include "chart/scales/plot_coordinates.h"
#include "fit_world.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {
namespace {

using test::FitWorld;
using Texts = std::vector<std::string>;

const std::vector<test::Point> times = {{100}, {150}, {210}, {260}, {330}, {410}};

Texts answers(FitWorld& world, int row = 0) {
  Texts found;
  for (const LifeAnswer& each : life_table(world.session, 1, row).rows)
    found.push_back(each.answer);
  return found;
}

TEST(LifeTable, AnswersByTheNumbersOfTheFit) {
  FitWorld world(times);
  EXPECT_EQ(answers(world), Texts({"", "", "", ""}));
  EXPECT_NE(life_table(world.session, 1, 0).remark.find("No fit yet"), std::string::npos);
  EXPECT_EQ(copied(life_table(world.session, 1, 0), {}).plain, "");
  world.fit();
  ASSERT_EQ(ask_times(world.session, "200"), "");
  const FitParam w = world.record(1).Rows(1);
  const Texts found = answers(world);
  const double expected[] = {std::pow(-std::log(0.99), 1 / w.Shape) / w.Scale,
                             std::pow(-std::log(0.9), 1 / w.Shape) / w.Scale,
                             std::pow(-std::log(0.5), 1 / w.Shape) / w.Scale,
                             std::exp(-std::pow(200 * w.Scale, w.Shape)),
                             std::tgamma(1 + 1 / w.Shape) / w.Scale};
  ASSERT_EQ(found.size(), std::size(expected));
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_NEAR(parse_number(found[i]).value(), expected[i], 1e-4 * expected[i]);
  mark_changed(world.data());
  EXPECT_EQ(answers(world).front(), "");
  EXPECT_EQ(life_table(world.session, 1, 0).remark.substr(0, 11), "Out of date");
}

// What is no number is said in words.
TEST(LifeTable, SaysWhatHasNoNumber) {
  struct Case {
    Life life;
    Texts answers;  ///< of B10, of B90 and the mean
    const char* remark;
  };
  Life survivors = test::weibull5c(3, 1000, 1.5, 50, 0.15);
  survivors.rows[1].Scale = unreached_scale;
  FitWorld world(times);
  world.session.life_questions.percents = {10, 90};
  for (const Case& c : std::initializer_list<Case>{
           {survivors, {"53.24", "never", "infinite"}, "The life that"},
           {{model_code::normal, {{1, 1, 1, 0, 1}}}, {"-0.28155", "2.2816", "1"}, "The life that"},
           {{model_code::by_failure_mode, {{0.01, 1, 2, 0, 1}, {}}},
            {"", "", ""},
            "A failure mode"},
       }) {
    FitRequest request;
    request.model = c.life.model;
    world.session.project.fits(1).Fits.resize(1);
    world.session.project.fits(1).Fits(1) = given_record(request, c.life, world.data().revision);
    world.session.project.fits(1).nFits = 1;
    const Texts found = answers(world);
    for (std::size_t i = 0; i < 3; ++i) {
      const auto number = parse_number(c.answers[i]);
      if (number)
        EXPECT_NEAR(parse_number(found[i]).value_or(1e9), *number, 0.3) << c.life.model << i;
      else
        EXPECT_EQ(found[i], c.answers[i]) << c.life.model;
    }
    EXPECT_EQ(life_table(world.session, 1, 0).remark.find(c.remark), 0u);
  }
}

TEST(LifeTable, TakesNumbersOfTheLocaleAndNamesJunk) {
  FitWorld world(times);
  auto& asked = world.session.life_questions;
  EXPECT_EQ(ask_percents(world.session, "B5; 0.1 %, 10"), "");
  EXPECT_EQ(asked.percents, std::vector<double>({0.1, 1, 5, 10, 50}));
  EXPECT_NE(ask_times(world.session, "1,5"), "") << "one number or two";
  EXPECT_EQ(asked.times, std::vector<double>());
  world.session.settings.punctuation = {',', '.'};
  EXPECT_EQ(ask_times(world.session, "1.234,5"), "");
  EXPECT_EQ(asked.times, std::vector<double>({1234.5}));
  const LifeQuestions before = asked;
  for (const char* junk :
       {"", "  ", "abc", "0.5,1", "1 zwei", "0", "100", "-3", "1e999", "nan", "5 cm"})
    EXPECT_NE(ask_percents(world.session, junk), "") << junk;
  EXPECT_EQ(asked, before);
  for (const LifeAnswer& row : life_table(world.session, 1, 0).rows)
    drop_question(world.session, row);
  EXPECT_EQ(life_table(world.session, 1, 0).rows.size(), 1u);
}

TEST(LifeTable, LeavesAsTextAndHtmlInTheNumbersOfTheLocale) {
  LifeTable table{1, "a<b", "", {}};
  table.rows.resize(2);
  table.rows[0].name = "B10";
  table.rows[0].answer = "1.5";
  table.rows[1].name = "B50\t";
  table.rows[1].answer = "never";
  const ClipboardText text = copied(table, {',', '.'});
  EXPECT_EQ(text.plain, "Life\ta<b\r\nB10\t1,5\r\nB50 \tnever\r\n");
  EXPECT_NE(text.html.find("<th>a&lt;b</th>"), std::string::npos);
  EXPECT_NE(text.html.find("<td align=\"right\">1,5</td>"), std::string::npos);
}

TEST(LifeMarks, StandWhereTheAnswerIsAndGoWithUndo) {
  FitWorld world(times);
  world.fit();
  end_step(world.session);
  const LifeTable table = life_table(world.session, 1, 0);
  const LifeAnswer b50 = table.rows[2];
  ASSERT_EQ(why_not_marked(world.session, 1, table, b50), "");
  mark_on_chart(world.session, 1, table, b50);
  ASSERT_EQ(world.session.project.charts(1).nTexts, 1);
  const Chart chart = with_answers(world.session, world.session.project.charts(1));
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  const AxisMap x = AxisMap::x(world.session.errors, plot, chart.Axes(0));
  const AxisMap y = AxisMap::y(world.session.errors, plot, chart.Axes(1));
  const auto places = points_of_mark(chart.Texts(1));
  ASSERT_EQ(places.size(), 3u);
  EXPECT_NEAR(x.read(places[1].x), *b50.time, 0.01 * *b50.time);
  EXPECT_NEAR(y.read(places[1].y), 0.5, 0.005);
  EXPECT_EQ(places[0].x, places[1].x);
  EXPECT_EQ(places[2].y, places[1].y);
  EXPECT_EQ(chart.Texts(1).Text2, "B50 = " + b50.answer);
  end_step(world.session);
  undo(world.session);
  EXPECT_EQ(world.session.project.charts(1).nTexts, 0);
  mark_on_chart(world.session, 1, table, b50);
  const auto is_seen = [&] {
    return is_shown(with_answers(world.session, world.session.project.charts(1)).Texts(1));
  };
  EXPECT_TRUE(is_seen());
  world.session.gDataForm(1)->enter(1, sheet_column::x, "77");
  announce(world.session);
  EXPECT_FALSE(is_seen()) << "the data are others now";
  world.put(times);
  world.fit();
  announce(world.session);
  EXPECT_TRUE(is_seen());
  // Off the axes there is no place for it.
  world.session.life_questions.times = {1e30};
  const LifeTable far = life_table(world.session, 1, 0);
  EXPECT_NE(why_not_marked(world.session, 1, far, far.rows[3]), "");
}

}  // namespace
}  // namespace tavlo
